#pragma once

#include <optional>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// How one thread is scheduled, as the kernel's own numbers.
struct ThreadPriority {
    /// SCHED_OTHER and its like, together with the flag that children do not inherit it.
    int policy = 0;
    /// Class and level of its access to disks; 0 is none of its own.
    int disk = 0;

    bool operator==(const ThreadPriority&) const = default;
};

/// None when the thread is gone.
std::optional<ThreadPriority> priorityOf(Pid thread);

/// What can be taken from a thread. Every user may come back from `batch`; from `idle` only with the right to raise.
enum class Background { batch, idle };

/// The priority that a thread would have in the background: the disk idle, and processor time as named. A thread that
/// is scheduled in real time, or lower already, keeps that; one with real-time access to disks keeps this.
ThreadPriority lowered(const ThreadPriority& priority, Background background);

/// False when the kernel refuses or the thread is gone. Calls only for what differs from `now`.
bool setPriority(Pid thread, const ThreadPriority& now, const ThreadPriority& wanted);

/// Whether this program holds the right to bring any thread of its user back from `idle`. Found out by trying it on a
/// thread of its own, since in a container the right may show and not count.
bool holdsRightToRaise();

/// Whether the process's own limit allows to bring it back from `idle`, without any right.
bool limitAllowsToRaise(Pid process);

}  // namespace tolvane::linuxhost
