#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/Observers.h"
#include "platform/Trays.h"
#include "platform/linux/bus/StatusHosts.h"
#include "platform/linux/windows/XTray.h"

namespace tolvane::linuxhost {

/// A host of status items on the session bus, or the X server's tray for a program that draws there. Neither polls nor
/// waits for an answer.
class LinuxTrays : public Trays {
public:
    /// Calls `drawsOnX11` when the first observer subscribes.
    LinuxTrays(std::shared_ptr<SessionBus> bus, std::shared_ptr<XEvents> events, std::function<bool()> drawsOnX11);

    bool present() const override;
    /// Counts the losses of the bus: an icon shown over one bus knows only that bus.
    int place() const override;
    Subscription onChange(std::function<void()> changed) override;

private:
    void watch();
    void tell();

    std::shared_ptr<SessionBus> bus_;
    std::shared_ptr<XEvents> events_;
    std::function<bool()> drawsOnX11_;
    Observers<> observers_;
    bool told_ = false;
    int toldPlace_ = 0;
    std::optional<StatusHosts> onBus_;
    std::optional<XTray> onServer_;
};

}  // namespace tolvane::linuxhost
