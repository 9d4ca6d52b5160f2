#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/Pid.h"

namespace tolvane::linuxhost {

/// Where a process or thread comes from, from its stat line:
///
///     4312 (node) S 4290 4312 4290 34816 4312 4194304 81433 0 0 0 512 77 0 0 20 0 11 0 178069 1187438592 24310 …
struct StatLine {
    /// 'Z' and 'X' are dead.
    char state = 0;
    Pid parent = 0;
    /// The first process of its session, which may be gone.
    Pid session = 0;
    /// Device number of the controlling terminal; 0 without.
    std::uint32_t terminal = 0;
    /// Clock ticks after boot.
    std::uint64_t startTicks = 0;

    bool isDead() const { return state == 'Z' || state == 'X' || state == 'x'; }
    /// A terminal window, a multiplexer or a remote login, not a console.
    bool isOnPseudoTerminal() const;

    bool operator==(const StatLine&) const = default;
};

/// None for a line that is cut short or is something else.
std::optional<StatLine> parseStatLine(std::string_view line);

}  // namespace tolvane::linuxhost
