#pragma once

#include <functional>
#include <memory>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// Whether a host on the session bus shows status items, which is how most panels take icons today. Main thread.
class StatusHosts {
public:
    /// Calls `changed` whenever the answer changes. Asks the bus at once and never starts anything; asks again when
    /// another bus takes over.
    StatusHosts(std::shared_ptr<SessionBus> bus, std::function<void()> changed);

    bool present() const;
    /// Counts the buses lost while a host there showed items.
    int losses() const;

private:
    class State;
    std::shared_ptr<State> state_;
};

}  // namespace tolvane::linuxhost
