#pragma once

#include <QProperty>
#include <functional>
#include <utility>

namespace tolvane {

/// One stored property of the model. Its observers hear of changes alone: assigning an equal value is silent.
/// Its side effect, such as writing a file, runs at every assignment. Main thread.
template <typename Value>
class Observed {
public:
    using Effect = std::function<void(const Value&)>;

    explicit Observed(Value initial = {}) : property_(std::move(initial)) {}
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

    const Value& get() const { return property_.value(); }
    const Value& operator*() const { return get(); }
    const Value* operator->() const { return &get(); }

    void set(Value value) {
        property_.setValue(std::move(value));
        if (effect_) effect_(get());
    }
    /// What every assignment does from here on; the values before it had none.
    void setEffect(Effect effect) { effect_ = std::move(effect); }

    /// Calls `changed` after each change for as long as the notifier lives.
    template <typename Function>
    [[nodiscard]] QPropertyNotifier onChange(Function changed) const {
        return property_.addNotifier(std::move(changed));
    }

private:
    QProperty<Value> property_;
    Effect effect_;
};

}  // namespace tolvane
