#pragma once

#include "platform/Date.h"
#include "platform/Pid.h"

namespace tolvane {

/// One life of a process: a pid with another start time is another process.
struct Incarnation {
    Pid pid = 0;
    Date startTime;

    auto operator<=>(const Incarnation&) const = default;
};

/// Acts on processes. Every call checks the start time first, so that a reused pid is never hit.
/// Main thread; no call blocks for longer than a few system calls.
class ProcessControl {
public:
    virtual ~ProcessControl() = default;

    /// Moves the process to background priority. False when the host refuses, when the process is gone, or when
    /// this user could not take it back later.
    virtual bool lowerPriority(const Incarnation& process) = 0;
    /// Gives back what `lowerPriority` took. False when the host refuses or the process is gone.
    virtual bool restorePriority(const Incarnation& process) = 0;
};

}  // namespace tolvane
