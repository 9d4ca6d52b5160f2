#pragma once

#include <QProperty>
#include <cstdint>
#include <functional>
#include <utility>

namespace tolvane {

/// One stored property of the model. Observers are notified of changes only: assigning an equal value is silent.
/// The side effect, such as writing a file, runs at every assignment. Main thread.
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
    /// Changes the value in place, for values too large to copy and compare: `change` gets a `Value&`. Always counts
    /// as a change. `change` must not touch this property in any other way.
    template <typename Function>
    void update(Function change) {
        change(value_);
        tellObservers();
        if (effect_) effect_(value_);
    }
    /// Runs at every assignment from now on; earlier values had no effect.
    void setEffect(Effect effect) { effect_ = std::move(effect); }

    /// Calls `changed` after each change for as long as the notifier lives.
    template <typename Function>
    [[nodiscard]] QPropertyNotifier onChange(Function changed) const {
        return changes_.addNotifier(std::move(changed));
    }

private:
    void tellObservers() { changes_.setValue(changes_.valueBypassingBindings() + 1); }

    Value value_;
    /// Counts the changes. Observers and bindings depend on the count, so that the value can change in place.
    /// Mutable, since observing a property does not change it.
    mutable QProperty<std::uint64_t> changes_;
    Effect effect_;
};

}  // namespace tolvane
