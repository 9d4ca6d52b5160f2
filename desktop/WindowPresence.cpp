#include "desktop/WindowPresence.h"

#include <QEvent>
#include <QWidget>
#include <utility>

namespace tolvane::desktop {

WindowPresence::WindowPresence(QWidget& window, std::function<void(bool open)> changed)
    : QObject(&window), changed_(std::move(changed)), open_(window.isVisible()) {
    window.installEventFilter(this);
    changed_(open_);
}

bool WindowPresence::eventFilter(QObject*, QEvent* event) {
    // Those that the window system sends are of minimising and the like.
    if (event->spontaneous()) return false;
    if (event->type() == QEvent::Show) take(true);
    if (event->type() == QEvent::Hide) take(false);
    return false;
}

void WindowPresence::take(bool open) {
    if (std::exchange(open_, open) != open) changed_(open);
}

}  // namespace tolvane::desktop
