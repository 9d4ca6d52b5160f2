#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Date.h"
#include "base/Pid.h"
#include "base/Text.h"

namespace tolvane {

/// One process as the reader took it from the kernel: facts of one moment, compared with nothing.
struct ProcSample {
    Pid pid = 0;
    Pid ppid = 0;
    std::uint32_t uid = 0;
    /// Short name; never empty when `path` is known.
    Text name;
    /// Of the executable; empty when it could not be read.
    Text path;
    /// The program's name first; empty when they could not be read.
    TextList args;
    std::optional<Text> cwd;
    /// With `pid` this names one life of a process.
    Date startTime;
    /// Bytes of memory that the process holds, compressed and swapped parts included.
    std::uint64_t footprint = 0;
    /// Bytes of `footprint` that are compressed or in swap.
    std::uint64_t compressed = 0;
    /// User plus system over the whole life.
    std::uint64_t cpuTimeNanos = 0;
    /// The part of it on performance cores; all of it where cores are alike.
    std::uint64_t perfTimeNanos = 0;
    /// Bytes.
    std::uint64_t peakFootprint = 0;
    /// Running total of bytes read back from swap; 0 on hosts that do not count it per process.
    std::uint64_t swapIns = 0;
    /// Whether the program is the system's, where the host says so; else its path decides.
    std::optional<bool> hostSaysSystem = std::nullopt;

    bool operator==(const ProcSample&) const = default;

    /// The arguments with blanks between them, or `path` without any.
    std::string commandLine() const;
    /// Whether a program with that pid, run by that user, may ever act on the process: the user's own, not one of the
    /// first two, not the program itself.
    bool mayBeTouchedBy(Pid program, std::uint32_t user) const { return uid == user && pid >= 2 && pid != program; }
    /// Programs that come with the system rather than with the user.
    bool isSystem() const;
    /// The word that tells this process from others of its interpreter: the first argument that looks like a path,
    /// reduced to its last component; else `name`. Valid as long as the sample.
    std::string_view ruleMatch() const;
    /// Bytes of plain memory when the compressed part counts at `ratio` to 1; ratios below 1 count as 1.
    std::uint64_t inRAM(double ratio) const;
};

}  // namespace tolvane
