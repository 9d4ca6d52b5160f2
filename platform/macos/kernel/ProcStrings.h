#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"

namespace tolvane::machost {

/// The arguments and environment of a process.
struct ProcStrings {
    /// Program name first.
    TextList args;
    /// NAME=value entries in the process's own order.
    std::vector<std::string> env;

    bool operator==(const ProcStrings&) const = default;
};

/// Parses a process-arguments block: a 32-bit little-endian count of arguments, the executable's path, bytes of 0 as
/// padding, the arguments, the environment. Every text ends at a byte of 0 or with the block. Returns what a truncated
/// block holds. Repairs invalid UTF-8.
ProcStrings procStrings(std::string_view block);

/// Parses the arguments only.
TextList parseProcArgs(std::string_view block);

/// Parses the environment only.
std::vector<std::string> parseProcEnv(std::string_view block);

}  // namespace tolvane::machost
