#include "platform/linux/windows/XEvents.h"

#include <utility>

#include "platform/linux/windows/XReply.h"

namespace tolvane::linuxhost {

XEvents::~XEvents() {
    notifier_.reset();
    if (connection_ != nullptr) xcb_disconnect(connection_);
}

void XEvents::connect() {
    if (std::exchange(isConnected_, true) || display_.empty()) return;
    int screen = 0;
    xcb_connection_t* connection = xcb_connect(display_.c_str(), &screen);
    if (xcb_connection_has_error(connection) != 0) return xcb_disconnect(connection);
    connection_ = connection;
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screen > 0 && roots.rem > 1; --screen) xcb_screen_next(&roots);
    root_ = roots.data->root;
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
}

bool XEvents::isThere() {
    connect();
    return connection_ != nullptr && xcb_connection_has_error(connection_) == 0;
}

XEvents::Window XEvents::root() {
    connect();
    return root_;
}

XEvents::Atom XEvents::atom(std::string_view name) {
    if (!isThere()) return 0;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = owned(xcb_intern_atom_reply(connection_, cookie, nullptr));
    readLater();
    return reply ? reply->atom : 0;
}

XEvents::Window XEvents::ownerOf(Atom selection) {
    if (!isThere()) return 0;
    const auto cookie = xcb_get_selection_owner(connection_, selection);
    const auto reply = owned(xcb_get_selection_owner_reply(connection_, cookie, nullptr));
    readLater();
    return reply ? reply->owner : 0;
}

void XEvents::listenTo(Window window, std::uint32_t events) {
    if (!isThere()) return;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_);
}

Subscription XEvents::onEvent(std::function<void(const xcb_generic_event_t*)> told) {
    return observers_.add(std::move(told));
}

void XEvents::read() {
    while (const auto event = owned(xcb_poll_for_event(connection_))) {
        // Zero is an error, for example about a window that has gone meanwhile.
        if (event->response_type != 0) observers_.tell(event.get());
    }
    if (xcb_connection_has_error(connection_) != 0) notifier_->setEnabled(false);
}

void XEvents::readLater() {
    QMetaObject::invokeMethod(notifier_.get(), [this] { read(); }, Qt::QueuedConnection);
}

}  // namespace tolvane::linuxhost
