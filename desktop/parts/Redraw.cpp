#include "desktop/parts/Redraw.h"

#include <utility>

namespace tolvane::desktop {

Redraw::Redraw(QWidget& widget, std::function<void()> draw) : widget_(widget), draw_(std::move(draw)) {}

void Redraw::later() {
    isStale_ = true;
    if (!widget_.isVisible() || std::exchange(isQueued_, true)) return;
    QMetaObject::invokeMethod(&widget_, [this] { now(); }, Qt::QueuedConnection);
}

void Redraw::now() {
    isQueued_ = false;
    isStale_ = false;
    draw_();
}

void Redraw::catchUp() {
    if (isStale_) now();
}

}  // namespace tolvane::desktop
