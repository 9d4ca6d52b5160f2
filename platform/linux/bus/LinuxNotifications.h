#pragma once

#include <memory>
#include <string>

#include "platform/Notifications.h"
#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// Notifications through the desktop's own daemon, which the bus may have to start first. Each stands on its own; a
/// click anywhere on one is its default action and tells the section. What a daemon cannot show is left out: a title
/// carries the body where there is no room for one, and without actions there are no clicks. A daemon that is missing
/// or silent costs a notification and nothing else. There is no permission to ask for on these desktops.
class LinuxNotifications : public Notifications {
public:
    explicit LinuxNotifications(std::shared_ptr<SessionBus> bus);
    ~LinuxNotifications() override;

    void post(const Notification& notification) override;
    void requestPermission() override {}
    Subscription onClick(Clicked clicked) override;

private:
    class Daemon;
    std::shared_ptr<Daemon> daemon_;
};

/// Plain text for a place that reads markup.
std::string escapedMarkup(const std::string& text);

}  // namespace tolvane::linuxhost
