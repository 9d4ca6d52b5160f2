#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/linux/processes/ProcTable.h"

namespace tolvane::linuxhost {

/// What of a process follows from the processes above it: the parent that we report, whether it belongs to the
/// system, whether it is a container's. Works these out once and again only when something they rest on moved.
class Ancestry {
public:
    /// A row with its facts read, of any pid; null when there is none.
    using Lookup = std::function<ProcEntry*(Pid)>;

    /// `home` is where projects lie; empty where nobody has any.
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
