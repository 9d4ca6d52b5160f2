#include "desktop/program/WindowPresence.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <utility>

namespace tolvane::desktop {

namespace {

bool isMainWindow(const QObject* object) { return qobject_cast<const QMainWindow*>(object) != nullptr; }

}  // namespace

WindowPresence::WindowPresence(std::function<void(bool open)> changed) : changed_(std::move(changed)) {
    for (const auto* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && isMainWindow(window)) open_.insert(window);
    }
    qApp->installEventFilter(this);
    changed_(!open_.empty());
}

bool WindowPresence::eventFilter(QObject* watched, QEvent* event) {
    // Spontaneous events come from the window system, for example on minimising.
    if (event->spontaneous()) return false;
    const bool before = !open_.empty();
    if (event->type() == QEvent::Show && isMainWindow(watched)) open_.insert(watched);
    // Compares addresses only: a window that hides during its destruction no longer has its type.
    if (event->type() == QEvent::Hide) open_.erase(watched);
    if (before == open_.empty()) changed_(!open_.empty());
    return false;
}

}  // namespace tolvane::desktop
