#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Date.h"
#include "base/Pid.h"
#include "base/Text.h"

namespace tolvane {

/// One process as the kernel reported it: facts of one moment, compared with nothing.
struct ProcSample {
    Pid pid = 0;
    Pid ppid = 0;
    std::uint32_t uid = 0;
    /// Short name; never empty when `path` is known.
    Text name;
    /// Path of the executable; empty when it could not be read.
    Text path;
    /// The arguments, program name first; empty when they could not be read.
    TextList args;
    std::optional<Text> cwd;
    /// Identifies one life of a process together with `pid`.
    Date startTime;
    /// Bytes of memory that the process holds, compressed and swapped parts included.
    std::uint64_t footprint = 0;
    /// Bytes of `footprint` that are compressed or in swap.
    std::uint64_t compressed = 0;
    /// User and system time over the whole life.
    std::uint64_t cpuTimeNanos = 0;
    /// The part of it spent on performance cores; all of it where cores are alike.
    std::uint64_t perfTimeNanos = 0;
    /// Bytes.
    std::uint64_t peakFootprint = 0;
    /// Running total of bytes read back from swap; 0 on hosts that do not count it per process.
    std::uint64_t swapIns = 0;
    /// Whether the program belongs to the system, if the host says so; otherwise its path decides.
    std::optional<bool> hostSaysSystem = std::nullopt;

    bool operator==(const ProcSample&) const = default;

    /// The arguments joined by blanks, or `path` when there are none.
    std::string commandLine() const;
    /// Whether a program with that pid, run by that user, may ever act on the process. It must be the user's own, not
    /// one of the first two, and not the program itself.
    bool mayBeTouchedBy(Pid program, std::uint32_t user) const { return uid == user && pid >= 2 && pid != program; }
    /// Whether the program came with the system rather than with the user.
    bool isSystem() const;
    /// What distinguishes this process from others of its interpreter: the last component of the first argument that
    /// looks like a path, or `name`. Valid as long as the sample.
    std::string_view ruleMatch() const;
    /// Bytes of physical memory when the compressed part counts at `ratio` to 1. Ratios below 1 count as 1.
    std::uint64_t inRAM(double ratio) const;
};

}  // namespace tolvane
