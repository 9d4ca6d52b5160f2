#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/Observers.h"
#include "platform/Trays.h"
#include "platform/linux/bus/StatusHosts.h"
#include "platform/linux/windows/XTray.h"

namespace tolvane::linuxhost {

/// A host of status items on the session bus, or the tray of the X server for a program that draws there. Nothing is
/// polled, and nothing waits for an answer.
class LinuxTrays : public Trays {
public:
    /// `drawsOnX11` is asked when the looking begins.
    LinuxTrays(std::shared_ptr<SessionBus> bus, std::shared_ptr<XEvents> events, std::function<bool()> drawsOnX11);

    bool present() const override;
    /// Icons that are shown over a bus know that bus alone.
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
