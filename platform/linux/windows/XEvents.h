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

/// Events about single windows, over a connection of its own: what a program selects there is added to what other
/// connections select. The server is contacted from the first call on; without it every answer is empty. Main thread,
/// with its event loop; nothing wakes while there are no events.
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
    /// 0 when no window owns it.
    Window ownerOf(Atom selection);
    /// Replaces what was selected for this window before. Windows that are gone are passed over.
    void listenTo(Window window, std::uint32_t events);
    /// The event is owned by the caller of the callback until it returns.
    Subscription onEvent(std::function<void(const xcb_generic_event_t* event)> told);

private:
    void connect();
    void read();
    /// A reply may have brought events along that the socket no longer announces.
    void readLater();

    std::string display_;
    bool isConnected_ = false;
    xcb_connection_t* connection_ = nullptr;
    Window root_ = 0;
    std::unique_ptr<QSocketNotifier> notifier_;
    Observers<const xcb_generic_event_t*> observers_;
};

}  // namespace tolvane::linuxhost
