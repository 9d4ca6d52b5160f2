#pragma once

#include <functional>
#include <memory>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// Whether somebody on the session bus shows status items, which is how most panels take icons today. Main thread.
class StatusHosts {
public:
    /// `changed` is called whenever the answer changed. The bus is asked at once, and never made to start anything; one
    /// that takes the place of another is asked anew.
    StatusHosts(std::shared_ptr<SessionBus> bus, std::function<void()> changed);

    bool present() const;
    /// Counts the buses that were lost while somebody there showed items.
    int losses() const;

private:
    class State;
    std::shared_ptr<State> state_;
};

}  // namespace tolvane::linuxhost
