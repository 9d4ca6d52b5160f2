#pragma once

#include <functional>
#include <memory>

#include "platform/linux/windows/XEvents.h"

namespace tolvane::linuxhost {

/// The X server's tray: a window that owns a certain selection. It announces itself to all clients when it appears.
class XTray {
public:
    /// Calls `changed` whenever the tray appears or goes. Asks the server at once.
    XTray(std::shared_ptr<XEvents> events, std::function<void()> changed);

    bool present() const { return owner_ != 0; }

private:
    void look();
    void hear(const xcb_generic_event_t* event);
    bool concerns(const xcb_generic_event_t* event) const;

    std::shared_ptr<XEvents> events_;
    std::function<void()> changed_;
    XEvents::Atom selection_ = 0;
    XEvents::Atom announcement_ = 0;
    XEvents::Window owner_ = 0;
    Subscription news_;
};

}  // namespace tolvane::linuxhost
