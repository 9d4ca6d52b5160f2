#pragma once

#include <QPropertyNotifier>
#include <QWidget>
#include <functional>
#include <vector>

namespace tolvane::desktop {

/// Redraws a widget when properties of the model change: once per turn of the event loop, and only while the widget is
/// shown. Changes in between are drawn when it is shown again. A member of its widget.
class Redraw {
public:
    Redraw(QWidget& widget, std::function<void()> draw);

    /// Each argument is a property of the model, which outlives the widget.
    template <typename... Properties>
    void follow(const Properties&... properties) {
        (notifiers_.push_back(properties.onChange([this] { later(); })), ...);
    }
    /// Draws at the next turn of the event loop, or when the widget is shown again.
    void later();
    void now();
    /// Call from the widget's show event.
    void catchUp();

private:
    QWidget& widget_;
    std::function<void()> draw_;
    bool isStale_ = true;
    bool isQueued_ = false;
    std::vector<QPropertyNotifier> notifiers_;
};

}  // namespace tolvane::desktop
