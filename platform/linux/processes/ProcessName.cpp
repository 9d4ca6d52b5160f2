#include "platform/linux/processes/ProcessName.h"

#include <algorithm>
#include <array>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Names of first threads, and of programs started through a link or a descriptor instead of their own file.
constexpr std::array<std::string_view, 6> emptyNames = {"MainThread", "Main Thread", "Main",
                                                        "main",       "GeckoMain",   "exe"};

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

bool saysNothing(std::string_view comm) {
    return std::ranges::all_of(comm, isDigit) || std::ranges::find(emptyNames, comm) != emptyNames.end();
}

/// A script's name stands behind its interpreter and perhaps one option.
constexpr std::size_t argumentsLookedAt = 3;

}  // namespace

bool isCutShort(std::string_view comm, std::string_view executable) {
    return comm.size() == commLimit && !Scan::lastComponent(executable).starts_with(comm);
}

std::string_view processName(std::string_view comm, std::string_view executable,
                             std::span<const std::string_view> arguments) {
    const auto program = Scan::lastComponent(executable);
    if (saysNothing(comm)) return program.empty() ? comm : program;
    if (comm.size() != commLimit) return comm;
    if (program.starts_with(comm)) return program;
    for (const auto argument : arguments.first(std::min(arguments.size(), argumentsLookedAt))) {
        const auto name = Scan::lastComponent(argument);
        if (name.starts_with(comm)) return name;
    }
    return comm;
}

}  // namespace tolvane::linuxhost
