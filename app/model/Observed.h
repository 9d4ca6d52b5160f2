#pragma once

#include <QProperty>
#include <cstdint>
#include <functional>
#include <utility>

namespace tolvane {

/// One stored property of the model. Its observers hear of changes alone: assigning an equal value is silent.
/// Its side effect, such as writing a file, runs at every assignment. Main thread.
template <typename Value>
class Observed {
public:
    using Effect = std::function<void(const Value&)>;

    explicit Observed(Value initial = {}) : value_(std::move(initial)) {}
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

    const Value& get() const {
        // Reading the count makes a binding that evaluates now depend on this property.
        static_cast<void>(changes_.value());
        return value_;
    }
    const Value& operator*() const { return get(); }
    const Value* operator->() const { return &get(); }

    void set(Value value) {
        if (!(value_ == value)) {
            value_ = std::move(value);
            tellObservers();
        }
        if (effect_) effect_(value_);
    }
    /// Changes the value where it stands, for values too large to be copied and compared: `change` gets a `Value&`.
    /// Counts as an assignment of another value. `change` must not touch this property in any other way.
    template <typename Function>
    void update(Function change) {
        change(value_);
        tellObservers();
        if (effect_) effect_(value_);
    }
    /// What every assignment does from here on; the values before it had none.
    void setEffect(Effect effect) { effect_ = std::move(effect); }

    /// Calls `changed` after each change for as long as the notifier lives.
    template <typename Function>
    [[nodiscard]] QPropertyNotifier onChange(Function changed) const {
        return changes_.addNotifier(std::move(changed));
    }

private:
    void tellObservers() { changes_.setValue(changes_.valueBypassingBindings() + 1); }

    Value value_;
    /// How often the value changed: what observers and bindings hang on, so that a value can change in place.
    /// Mutable, since who observes a property does not change it.
    mutable QProperty<std::uint64_t> changes_;
    Effect effect_;
};

}  // namespace tolvane
