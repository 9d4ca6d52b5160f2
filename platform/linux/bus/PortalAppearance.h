#pragma once

#include <memory>

#include "platform/AppearanceSettings.h"
#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// The settings portal of the desktop. A portal that runs is asked at once; one that has to be started answers later,
/// and without a bus or a portal nothing is known.
class PortalAppearance : public AppearanceSettings {
public:
    explicit PortalAppearance(std::shared_ptr<SessionBus> bus);
    ~PortalAppearance() override;

    AppearanceWishes current() override;
    Subscription onChange(std::function<void(const AppearanceWishes& wishes)> changed) override;

private:
    class State;
    std::shared_ptr<State> state_;
};

}  // namespace tolvane::linuxhost
