#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"

namespace tolvane {

/// What a process was started with.
struct ProcStrings {
    /// The program's name first.
    TextList args;
    /// Entries NAME=value in the process's own order.
    std::vector<std::string> env;

    bool operator==(const ProcStrings&) const = default;
};

/// Reads a process-arguments block: a 32-bit little-endian count of arguments, the executable's path, bytes of 0 as
/// padding, the arguments, the environment; every text ends at a byte of 0 or with the block. A block that is cut
/// short gives what it holds. Invalid UTF-8 is repaired.
ProcStrings procStrings(std::string_view block);

/// The arguments alone.
TextList parseProcArgs(std::string_view block);

/// The environment alone.
std::vector<std::string> parseProcEnv(std::string_view block);

}  // namespace tolvane
