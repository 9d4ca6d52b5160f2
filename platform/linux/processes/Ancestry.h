#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/linux/processes/ProcTable.h"

namespace tolvane::linuxhost {

/// Facts of a process that follow from its ancestors: the parent that we report, whether it belongs to the system,
/// whether it is a container's. Worked out once, and again only when something they depend on changed.
class Ancestry {
public:
    /// The row of any pid with its facts read; null when there is none.
    using Lookup = std::function<ProcEntry*(Pid)>;

    /// Projects lie below `home`; empty where there are none.
    Ancestry(Lookup lookup, std::uint32_t uid, std::string home);

    void settleParent(ProcEntry& entry) const;
    void settleSystem(ProcEntry& entry) const;

private:
    template <typename Stop>
    const ProcEntry* ancestor(const ProcEntry& entry, Stop stop) const;
    bool isUserManager(const ProcEntry& entry) const;
    bool isStartedByUser(const ProcEntry& entry) const;
    bool isContainer(const ProcEntry& entry) const;

    Lookup lookup_;
    std::uint32_t uid_;
    std::string home_;
};

}  // namespace tolvane::linuxhost
