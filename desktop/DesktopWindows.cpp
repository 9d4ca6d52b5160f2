#include "desktop/DesktopWindows.h"

#include <xcb/xcb.h>

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <memory>

namespace tolvane::desktop {

namespace {

xcb_connection_t* connection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

/// Selecting an event replaces the whole selection, which is the toolkit's: ours is added to it.
bool selectVisibility(xcb_connection_t* display, xcb_window_t window) {
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window), nullptr), &std::free);
    if (!attributes) return false;
    const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_VISIBILITY_CHANGE;
    xcb_change_window_attributes(display, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(display);
    return true;
}

unsigned number(const QWindow& window) { return static_cast<unsigned>(window.winId()); }

/// Icons in a tray are always there and tips come and go with the pointer: neither is a look at the program.
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

DesktopWindows::DesktopWindows() {
    qGuiApp->installEventFilter(this);
    if (connection()) qGuiApp->installNativeEventFilter(this);
}

DesktopWindows::~DesktopWindows() {
    if (qGuiApp) qGuiApp->removeNativeEventFilter(this);
}

bool DesktopWindows::isSeen(const QWindow& window) const {
    if (!counts(window) || !window.isVisible() || !window.isExposed()) return false;
    if (window.windowStates().testFlag(Qt::WindowMinimized)) return false;
    return watched_.empty() || !covered_.contains(number(window));
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
    if (event->type() == QEvent::Hide) covered_.erase(number(window));
    if (event->type() == QEvent::Expose && window.isExposed()) watch(window);
    tellLater();
    return false;
}

void DesktopWindows::watch(QWindow& window) {
    auto* display = connection();
    if (!display || !counts(window) || watched_.contains(number(window))) return;
    if (!selectVisibility(display, number(window))) return;
    watched_.insert(number(window));
    connect(&window, &QObject::destroyed, this, [this, gone = number(window)] {
        watched_.erase(gone);
        covered_.erase(gone);
    });
}

bool DesktopWindows::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t") return false;
    const auto* event = static_cast<xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7FU) != XCB_VISIBILITY_NOTIFY) return false;
    const auto* news = static_cast<xcb_visibility_notify_event_t*>(message);
    if (news->state == XCB_VISIBILITY_FULLY_OBSCURED) {
        covered_.insert(news->window);
    } else {
        covered_.erase(news->window);
    }
    tellLater();
    return false;
}

/// The toolkit tells of a change before it has taken place; and several come at once.
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
