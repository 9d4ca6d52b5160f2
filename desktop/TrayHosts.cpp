#include "desktop/TrayHosts.h"

#if !defined(__APPLE__)
#include <xcb/xcb.h>
#endif

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace tolvane::desktop {

namespace {

const auto service = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto path = QStringLiteral("/StatusNotifierWatcher");

#if !defined(__APPLE__)
xcb_connection_t* connection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

xcb_atom_t atom(xcb_connection_t* display, std::string_view name) {
    const auto cookie = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(display, cookie, nullptr), &std::free);
    return reply ? reply->atom : XCB_ATOM_NONE;
}

/// Selecting an event replaces the whole selection, which is the toolkit's: ours is added to it.
void selectStructure(xcb_connection_t* display, xcb_window_t window) {
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window), nullptr), &std::free);
    if (!attributes) return;
    const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(display, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(display);
}

#endif

/// Without an address the library would start a bus of its own.
bool busIsThere() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

}  // namespace

TrayHosts::TrayHosts() : bus_(busIsThere() ? QDBusConnection::sessionBus() : QDBusConnection(QStringLiteral("none"))) {
    watchBus();
    watchServer();
}

TrayHosts::~TrayHosts() {
    if (qGuiApp) qGuiApp->removeNativeEventFilter(this);
}

void TrayHosts::set(bool onBus, bool onServer) {
    const bool was = present();
    onBus_ = onBus;
    onServer_ = onServer;
    if (present() != was) emit changed();
}

void TrayHosts::watchBus() {
    if (!bus_.isConnected()) return;
    watcher_ = new QDBusServiceWatcher(service, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher_, &QDBusServiceWatcher::serviceRegistered, this, &TrayHosts::askBus);
    connect(watcher_, &QDBusServiceWatcher::serviceUnregistered, this, &TrayHosts::leaveBus);
    bus_.connect(service, path, service, QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(askBus()));
    bus_.connect(service, path, service, QStringLiteral("StatusNotifierHostUnregistered"), this, SLOT(askBus()));
    askBus();
}

/// The library stays with a connection that is dead: a new one needs a name of its own.
void TrayHosts::setBusThere(bool there) {
    delete std::exchange(watcher_, nullptr);
    leaveBus();
    if (!there) return;
    const auto name = QStringLiteral("tray-hosts-%1");
    QDBusConnection::disconnectFromBus(name.arg(renewals_));
    bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name.arg(++renewals_));
    watchBus();
}

void TrayHosts::leaveBus() { set(false, onServer_); }

/// A watcher may stand there without anybody who shows the icons.
void TrayHosts::askBus() {
    auto question = QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                   QStringLiteral("Get"));
    question << service << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        set(!reply.isError() && reply.value().variant().toBool(), onServer_);
        call->deleteLater();
    });
}

#if defined(__APPLE__)
// The menu bar is always there.
void TrayHosts::watchServer() { set(onBus_, true); }

void TrayHosts::readServer() {}

bool TrayHosts::nativeEventFilter(const QByteArray& /*type*/, void* /*message*/, qintptr* /*result*/) { return false; }
#else
void TrayHosts::watchServer() {
    auto* display = connection();
    if (!display) return;
    selection_ = atom(display, "_NET_SYSTEM_TRAY_S0");
    manager_ = atom(display, "MANAGER");
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    selectStructure(display, root);
    qGuiApp->installNativeEventFilter(this);
    readServer();
}

void TrayHosts::readServer() {
    auto* display = connection();
    const Owned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(display, xcb_get_selection_owner(display, selection_), nullptr), &std::free);
    owner_ = reply ? reply->owner : XCB_WINDOW_NONE;
    if (owner_ != XCB_WINDOW_NONE) selectStructure(display, owner_);
    set(onBus_, owner_ != XCB_WINDOW_NONE);
}

bool TrayHosts::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t") return false;
    const auto kind = static_cast<xcb_generic_event_t*>(message)->response_type & 0x7FU;
    if (kind == XCB_CLIENT_MESSAGE) {
        const auto* news = static_cast<xcb_client_message_event_t*>(message);
        if (news->type == manager_ && news->data.data32[1] == selection_) readServer();
    } else if (kind == XCB_DESTROY_NOTIFY && owner_ != XCB_WINDOW_NONE) {
        if (static_cast<xcb_destroy_notify_event_t*>(message)->window == owner_) readServer();
    }
    return false;
}

#endif

}  // namespace tolvane::desktop
