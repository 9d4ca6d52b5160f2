#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tolvane::linuxhost {

/// The lines that we use of /proc/PID/status:
///
///     Uid:	1000	1000	1000	1000
///     NSpid:	4312	17
///     RssAnon:	   97240 kB
///     VmSwap:	    1024 kB
struct ProcStatus {
    /// The effective user: the rights that it has, and the owner of its files in /proc.
    std::uint32_t uid = 0;
    /// Bytes; nullopt for kernel threads and for processes whose first thread ended.
    std::optional<std::uint64_t> anonymous = std::nullopt;
    /// Bytes.
    std::uint64_t swapped = 0;
    /// It runs in a pid namespace other than ours, as containers and sandboxes do.
    bool inOtherPidNamespace = false;

    bool operator==(const ProcStatus&) const = default;
};

/// Nullopt without a user id: the text is cut short or is something else.
std::optional<ProcStatus> parseProcStatus(std::string_view text);

}  // namespace tolvane::linuxhost
