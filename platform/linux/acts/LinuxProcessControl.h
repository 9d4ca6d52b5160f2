#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/ProcessControl.h"
#include "platform/linux/acts/ThreadPriority.h"
#include "platform/linux/processes/ProcStat.h"

namespace tolvane::linuxhost {

/// Lowers priority only in ways that every user can undo: the idle class for disks, and for the processor SCHED_BATCH,
/// or SCHED_IDLE where this program may return from it. Niceness is never touched, since an ordinary user cannot raise
/// it again. (A unit of the user's service manager could get an idle share of the processor as a whole; that is not
/// done yet.)
///
/// On Linux, priorities belong to threads, so each thread is lowered and each gets its own priority back. Threads and
/// child processes that start meanwhile inherit the low priority; restoring resets theirs too.
///
/// Never acts on pid 1, on this program and its ancestors, or on a process of another user.
class LinuxProcessControl : public ProcessControl {
public:
    /// `dateOfTicks` converts the kernel's start ticks into the start times that identify processes.
    using DateOfTicks = std::function<Date(std::uint64_t ticks)>;

    explicit LinuxProcessControl(DateOfTicks dateOfTicks, std::string proc = "/proc");

    bool send(Signal signal, const Incarnation& process) override;
    std::optional<Pid> start(const DetachedStart& program) override;
    bool lowerPriority(const Incarnation& process) override;
    bool restorePriority(const Incarnation& process) override;

private:
    /// How a process was lowered, and since when.
    struct Loan {
        Background background = Background::batch;
        /// The priority that each thread had, except those that inherited ours.
        std::map<Pid, ThreadPriority> before;
        /// Kernel ticks; children that started later inherited the low priority.
        std::uint64_t sinceTicks = 0;
    };

    bool isAllowed(Pid pid) const;
    bool isAncestor(Pid pid) const;
    bool isAlive(const Incarnation& process) const;
    std::vector<Pid> threads(Pid pid) const;
    std::vector<Pid> children(Pid pid) const;
    void noteThreads(Pid pid, Loan& loan) const;
    void lowerThreads(Pid pid, Loan& loan) const;
    bool restoreThreads(Pid pid, const Loan& loan, const ThreadPriority& newcomers) const;
    void restoreHeirs(Pid pid, const Loan& loan, const ThreadPriority& newcomers) const;
    bool isLoaned(Pid pid, const ProcStat& stat) const;
    void forgetTheGone();

    DateOfTicks dateOfTicks_;
    std::string proc_;
    bool holdsRight_;
    std::map<Incarnation, Loan> loans_;
};

}  // namespace tolvane::linuxhost
