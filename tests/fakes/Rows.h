#pragma once

#include <cstdint>
#include <string_view>

#include "core/sampling/ProcRow.h"

namespace tolvane::fakes {

inline constexpr std::uint64_t MiB = 1024 * 1024;
inline constexpr std::uint64_t GiB = 1024 * MiB;

/// A process of an ordinary user with an executable of the same name, for a test to build on.
inline ProcRow row(Pid pid, std::string_view name, std::uint64_t footprint = MiB) {
    ProcRow made;
    made.sample.pid = pid;
    made.sample.ppid = 1;
    made.sample.uid = 501;
    made.sample.name = name;
    made.sample.path = Text("/opt/" + std::string(name));
    made.sample.startTime = Date{Seconds{790'000'000}};
    made.sample.footprint = footprint;
    made.unusedSince = Date{Seconds{799'000'000}};
    return made;
}

inline ProcRow appRow(Pid pid, std::string_view name, std::string_view appPath, std::uint64_t footprint = MiB) {
    auto made = row(pid, name, footprint);
    made.appPath = Text(appPath);
    return made;
}

inline ProcRow projectRow(Pid pid, std::string_view name, std::string_view root, std::uint64_t footprint = MiB) {
    auto made = row(pid, name, footprint);
    made.project = Text(root);
    return made;
}

inline ProcRow sessionRow(Pid pid, std::string_view name, std::string_view session, std::uint64_t footprint = MiB) {
    auto made = row(pid, name, footprint);
    made.claudeSession = Text(session);
    return made;
}

}  // namespace tolvane::fakes
