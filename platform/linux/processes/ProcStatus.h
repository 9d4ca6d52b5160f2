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
    /// The effective one: whose rights it has, and who owns its files here.
    std::uint32_t uid = 0;
    /// Bytes; none for kernel threads and for processes whose first thread ended.
    std::optional<std::uint64_t> anonymous = std::nullopt;
    /// Bytes.
    std::uint64_t swapped = 0;
    /// It runs below a pid namespace other than ours, as containers and sandboxes do.
    bool inOtherPidNamespace = false;

    bool operator==(const ProcStatus&) const = default;
};

/// None without a user id: cut short, or something else.
std::optional<ProcStatus> parseProcStatus(std::string_view text);

}  // namespace tolvane::linuxhost
