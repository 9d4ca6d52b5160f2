#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"

namespace tolvane {

/// One life of a process: a pid with another start time is another process.
struct Incarnation {
    Pid pid = 0;
    Date startTime;

    auto operator<=>(const Incarnation&) const = default;
};

enum class Signal { terminate = 15, kill = 9 };

/// A program to start detached from this one.
struct DetachedStart {
    /// An absolute path; never searched for.
    std::string executable;
    /// Including the zeroth element; empty means the executable alone.
    std::vector<std::string> args;
    /// The complete environment as entries NAME=value; ours is not merged in.
    std::vector<std::string> environment;
    std::string workingDirectory;
    /// Standard output and standard error are appended to this file, which is created if missing; its folder must
    /// exist.
    std::string log;

    bool operator==(const DetachedStart&) const = default;
};

/// Acts on processes. Every call checks the start time first, so that a reused pid is never hit.
/// Main thread; no call blocks for longer than a few system calls.
class ProcessControl {
public:
    virtual ~ProcessControl() = default;

    /// Sends the signal to exactly this process, never to one that reused its pid. False when nothing was sent.
    virtual bool send(Signal signal, const Incarnation& process) = 0;
    /// Starts the program in a session of its own, so that it outlives us. Nullopt when it could not be started.
    virtual std::optional<Pid> start(const DetachedStart& program) = 0;
    /// Moves the process to background priority. False when the host refuses, when the process is gone, or when this
    /// user could not undo it later.
    virtual bool lowerPriority(const Incarnation& process) = 0;
    /// Undoes `lowerPriority`. False when the host refuses or the process is gone.
    virtual bool restorePriority(const Incarnation& process) = 0;
};

}  // namespace tolvane
