#pragma once

#include <memory>
#include <string>

#include "platform/Notifications.h"
#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// Posts notifications through the desktop's daemon, which the bus may have to start first. Each notification stands
/// alone; a click anywhere on it is its default action and reports the section. What a daemon cannot show is left out:
/// without room for a body the title carries it, and without actions there are no clicks. A missing or silent daemon
/// costs one notification and nothing else. These desktops have no permission to ask for.
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

/// Escapes plain text for a place that reads markup.
std::string escapedMarkup(const std::string& text);

}  // namespace tolvane::linuxhost
