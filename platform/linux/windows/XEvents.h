#pragma once

#include <xcb/xcb.h>

#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/Observers.h"

namespace tolvane::linuxhost {

/// News of the X server about single windows, over a connection of its own: what a program asks for there is added to
/// what other connections ask for. The server is spoken to from the first call on; without it every answer is empty.
/// Main thread, with its event loop; nothing wakes while there is no news.
class XEvents {
public:
    using Window = std::uint32_t;
    using Atom = std::uint32_t;

    /// `display` as in DISPLAY.
    explicit XEvents(std::string display) : display_(std::move(display)) {}
    XEvents(const XEvents&) = delete;
    XEvents& operator=(const XEvents&) = delete;
    ~XEvents();

    bool isThere();
    Window root();
    Atom atom(std::string_view name);
    /// 0 when nobody owns it.
    Window ownerOf(Atom selection);
    /// In place of what was asked for of this window before. Windows that are gone are passed over.
    void listenTo(Window window, std::uint32_t events);
    /// The event is the callee's until the call-back returns.
    Subscription onEvent(std::function<void(const xcb_generic_event_t* event)> told);

private:
    void connect();
    void read();
    /// An answer may have brought news along, of which the socket tells no more.
    void readLater();

    std::string display_;
    bool isConnected_ = false;
    xcb_connection_t* connection_ = nullptr;
    Window root_ = 0;
    std::unique_ptr<QSocketNotifier> notifier_;
    Observers<const xcb_generic_event_t*> observers_;
};

}  // namespace tolvane::linuxhost
