#pragma once

#include <optional>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// How one thread is scheduled, as the kernel's own numbers.
struct ThreadPriority {
    /// SCHED_OTHER or another policy, with the flag that says children do not inherit it.
    int policy = 0;
    /// Class and level of its disk access; 0 when it has none of its own.
    int disk = 0;

    bool operator==(const ThreadPriority&) const = default;
};

/// Nullopt when the thread is gone.
std::optional<ThreadPriority> priorityOf(Pid thread);

/// How far a thread is lowered. Every user may return from `batch`; returning from `idle` takes the right to raise.
enum class Background { batch, idle };

/// The priority that a thread has in the background: idle disk access, and processor time as `background` says. A
/// thread that is scheduled in real time, or is low already, keeps its policy; real-time disk access is kept too.
ThreadPriority lowered(const ThreadPriority& priority, Background background);

/// False when the kernel refuses or the thread is gone. Makes system calls only for what differs from `now`.
bool setPriority(Pid thread, const ThreadPriority& now, const ThreadPriority& wanted);

/// Whether this program may bring any thread of its user back from `idle`. Tried on a thread of its own, since in a
/// container the capability may be listed and yet not work.
bool holdsRightToRaise();

/// Whether the process's own limit lets it return from `idle` without that right.
bool limitAllowsToRaise(Pid process);

}  // namespace tolvane::linuxhost
