#include "desktop/program/DesktopWindows.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <memory>
#include <utility>

namespace tolvane::desktop {

namespace {

WindowCovers::Window number(const QWindow& window) { return window.winId(); }

/// Tray icons are always shown and tooltips follow the pointer, so neither means that the user is looking at the
/// program.
bool counts(const QWindow& window) {
    const auto type = window.type();
    return type != Qt::ToolTip && !window.objectName().startsWith(QLatin1String("QSystemTrayIconSys"));
}

bool concernsVisibility(QEvent::Type type) {
    switch (type) {
        case QEvent::Expose:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::WindowStateChange:
        case QEvent::PlatformSurface:
            return true;
        default:
            return false;
    }
}

}  // namespace

DesktopWindows::DesktopWindows(WindowCovers* covers) : covers_(covers) {
    qGuiApp->installEventFilter(this);
    if (covers_) coverNews_ = covers_->onChange([this] { tellLater(); });
}

bool DesktopWindows::isSeen(const QWindow& window) const {
    if (!counts(window) || !window.isVisible() || !window.isExposed()) return false;
    if (window.windowStates().testFlag(Qt::WindowMinimized)) return false;
    return watched_.empty() || !covers_->isCovered(number(window));
}

bool DesktopWindows::anyVisible() const {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [this](const auto* each) { return isSeen(*each); });
}

Subscription DesktopWindows::onChange(std::function<void()> changed) {
    const int key = ++nextObserver_;
    observers_->emplace(key, std::move(changed));
    return Subscription([weak = std::weak_ptr(observers_), key] {
        if (const auto alive = weak.lock()) alive->erase(key);
    });
}

bool DesktopWindows::eventFilter(QObject* watched, QEvent* event) {
    if (!concernsVisibility(event->type()) || !watched->isWindowType()) return false;
    auto& window = *static_cast<QWindow*>(watched);
    if (!window.isTopLevel()) return false;
    if (event->type() == QEvent::Expose && window.isExposed()) watch(window);
    tellLater();
    return false;
}

void DesktopWindows::watch(QWindow& window) {
    if (!covers_ || !counts(window) || watched_.contains(number(window))) return;
    if (!covers_->watch(number(window))) return;
    watched_.insert(number(window));
    connect(&window, &QObject::destroyed, this, [this, gone = number(window)] {
        watched_.erase(gone);
        covers_->forget(gone);
    });
}

/// The toolkit reports a change before it takes effect, and often several at once.
void DesktopWindows::tellLater() {
    if (waiting_) return;
    waiting_ = true;
    QMetaObject::invokeMethod(this, &DesktopWindows::tell, Qt::QueuedConnection);
}

void DesktopWindows::tell() {
    waiting_ = false;
    const bool seen = anyVisible();
    if (seen == seen_) return;
    seen_ = seen;
    const auto present = *observers_;
    for (const auto& [key, observer] : present) observer();
}

}  // namespace tolvane::desktop
