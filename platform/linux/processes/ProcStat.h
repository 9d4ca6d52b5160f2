#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// The fields that we use of /proc/PID/stat, one line such as
///
///     4312 (node) S 4290 4312 4290 34816 4312 4194304 81433 0 0 0 512 77 0 0 20 0 11 0 178069 1187438592 24310
///     18446744073709551615 4198400 61446085 140724560171024 0 0 0 0 4096 134234626 0 0 0 17 1 0 0 0 0 0 78224888
///     78366728 104947712 140724560178453 140724560178458 140724560178458 140724560181186 0
///
/// (without the line ends). Views point into the line.
struct ProcStat {
    Pid pid = 0;
    /// As the kernel has it: up to 15 bytes of anything except NUL, including brackets and line ends.
    std::string_view comm = {};
    /// 'R', 'S', 'D', 'T', 'Z' …
    char state = 0;
    Pid ppid = 0;
    /// The first process of its session, which may be gone.
    Pid session = 0;
    /// Device number of the controlling terminal; 0 without.
    std::uint32_t terminal = 0;
    std::uint64_t flags = 0;
    /// Of all threads, since the process started.
    std::uint64_t minorFaults = 0;
    /// Clock ticks of all threads.
    std::uint64_t userTicks = 0;
    std::uint64_t systemTicks = 0;
    std::uint64_t threads = 0;
    /// Clock ticks after boot.
    std::uint64_t startTicks = 0;
    /// Resident pages, roughly: the kernel does not add up its per-core counters for this value.
    std::uint64_t residentPages = 0;
    /// Changes at exec; 0 for processes that we may not trace and for kernel threads.
    std::uint64_t execStamp = 0;

    bool isKernelThread() const;
    /// A zombie that waits for its parent. A first thread that ended before the others looks dead, but is not.
    bool isGone() const;
    /// Its controlling terminal belongs to a terminal window, a multiplexer or a remote login.
    bool isOnPseudoTerminal() const;

    bool operator==(const ProcStat&) const = default;
};

/// Nullopt for a line that is cut short or is something else.
std::optional<ProcStat> parseProcStat(std::string_view line);

/// A process's stat line, read afresh and without the name, which would be a view. Nullopt for a process that is gone.
std::optional<ProcStat> readProcStat(const std::string& proc, Pid pid);

}  // namespace tolvane::linuxhost
