#include "platform/linux/processes/ProcessName.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Names of first threads, and of programs started through a link or a descriptor.
constexpr std::array<std::string_view, 4> emptyNames = {"Main", "main", "GeckoMain", "exe"};

/// Node calls its first thread "MainThread", and from 25 on "node-MainThread"; others write "Main Thread". Reduced
/// to its letters, such a name ends like this.
constexpr std::string_view mainThread = "mainthread";
/// The shortest part of a name that the kernel cut; fewer letters could begin another word.
constexpr std::size_t leastOfCutThread = 6;

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }
bool isLetter(char letter) { return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z'); }

/// At most 15 bytes, so nothing is allocated.
std::string foldedLetters(std::string_view comm) {
    std::string letters;
    for (const char each : comm) {
        if (isLetter(each)) letters += static_cast<char>(each | 0x20);
    }
    return letters;
}

bool namesMainThread(std::string_view comm) {
    const auto letters = foldedLetters(comm);
    if (letters.ends_with(mainThread)) return true;
    if (comm.size() != commLimit) return false;
    for (auto size = leastOfCutThread; size < mainThread.size(); ++size) {
        if (letters.ends_with(mainThread.substr(0, size))) return true;
    }
    return false;
}

bool saysNothing(std::string_view comm) {
    return std::ranges::all_of(comm, isDigit) || std::ranges::find(emptyNames, comm) != emptyNames.end() ||
           namesMainThread(comm);
}

/// What a first thread's name says without an executable: "node" from "node-MainThread".
std::string_view wordsBefore(std::string_view comm) {
    const auto separator = namesMainThread(comm) ? comm.find_first_of("-_:") : std::string_view::npos;
    return separator == std::string_view::npos || separator == 0 ? comm : comm.substr(0, separator);
}

/// A script's name follows its interpreter and perhaps one option.
constexpr std::size_t argumentsLookedAt = 3;

}  // namespace

bool isCutShort(std::string_view comm, std::string_view executable) {
    return comm.size() == commLimit && !namesMainThread(comm) && !Scan::lastComponent(executable).starts_with(comm);
}

std::string_view processName(std::string_view comm, std::string_view executable,
                             std::span<const std::string_view> arguments) {
    const auto program = Scan::lastComponent(executable);
    if (saysNothing(comm)) return program.empty() ? wordsBefore(comm) : program;
    if (comm.size() != commLimit) return comm;
    if (program.starts_with(comm)) return program;
    for (const auto argument : arguments.first(std::min(arguments.size(), argumentsLookedAt))) {
        const auto name = Scan::lastComponent(argument);
        if (name.starts_with(comm)) return name;
    }
    return comm;
}

}  // namespace tolvane::linuxhost
