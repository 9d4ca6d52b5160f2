#include "desktop/DesktopWindows.h"

#if !defined(__APPLE__)
#include <xcb/xcb.h>
#endif

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

namespace tolvane::desktop {

namespace {

/// A window that is covered altogether, or no longer.
struct Cover {
    unsigned window = 0;
    bool isCovered = false;
};

unsigned number(const QWindow& window) { return static_cast<unsigned>(window.winId()); }

#if defined(__APPLE__)
// A covered window is not exposed there: the toolkit tells all there is.
bool tellsOfCovers() { return false; }
bool asksForCovers(const QWindow& /*window*/) { return false; }
std::optional<Cover> coverIn(const QByteArray& /*type*/, const void* /*message*/) { return std::nullopt; }
#else
xcb_connection_t* connection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

bool tellsOfCovers() { return connection() != nullptr; }

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

/// Selecting an event replaces the whole selection, which is the toolkit's: ours is added to it.
bool asksForCovers(const QWindow& window) {
    auto* display = connection();
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, number(window)), nullptr),
        &std::free);
    if (!attributes) return false;
    const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_VISIBILITY_CHANGE;
    xcb_change_window_attributes(display, number(window), XCB_CW_EVENT_MASK, &events);
    xcb_flush(display);
    return true;
}

std::optional<Cover> coverIn(const QByteArray& type, const void* message) {
    if (type != "xcb_generic_event_t") return std::nullopt;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7FU) != XCB_VISIBILITY_NOTIFY) return std::nullopt;
    const auto* news = static_cast<const xcb_visibility_notify_event_t*>(message);
    return Cover{.window = news->window, .isCovered = news->state == XCB_VISIBILITY_FULLY_OBSCURED};
}
#endif

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
    if (tellsOfCovers()) qGuiApp->installNativeEventFilter(this);
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
    if (!tellsOfCovers() || !counts(window) || watched_.contains(number(window))) return;
    if (!asksForCovers(window)) return;
    watched_.insert(number(window));
    connect(&window, &QObject::destroyed, this, [this, gone = number(window)] {
        watched_.erase(gone);
        covered_.erase(gone);
    });
}

bool DesktopWindows::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    const auto cover = coverIn(type, message);
    if (!cover) return false;
    if (cover->isCovered) {
        covered_.insert(cover->window);
    } else {
        covered_.erase(cover->window);
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
