#pragma once

#include <set>
#include <string>
#include <string_view>

#include "core/rules/AgentNames.h"
#include "core/rules/World.h"
#include "core/sampling/ProcRow.h"

namespace tolvane::fakes {

inline constexpr std::uint32_t someUser = 501;
inline constexpr std::uint64_t megabyte = 1U << 20U;
inline constexpr Date someNow{Seconds{800'000'000}};

/// A user's process outside the system's folders: started an hour ago, unused since, 100 MB of which 10 are compressed.
inline ProcRow row(Pid pid, Pid ppid, std::string_view name, TextList args = {}) {
    return {.sample = {.pid = pid,
                       .ppid = ppid,
                       .uid = someUser,
                       .name = name,
                       .path = "/opt/" + std::string(name),
                       .args = std::move(args),
                       .startTime = someNow - Seconds{3600},
                       .footprint = 100 * megabyte,
                       .compressed = 10 * megabyte},
            .unusedSince = someNow - Seconds{3600}};
}

/// A process of an application.
inline ProcRow appRow(Pid pid, Pid ppid, std::string_view name, std::string_view appID) {
    auto result = row(pid, ppid, name);
    result.appPath = "/Applications/" + std::string(name) + ".app";
    result.appID = appID;
    return result;
}

/// Every name under which the process can count as an agent.
inline std::set<std::string> agentIdentities(const ProcSample& sample) {
    std::set<std::string> names;
    std::string scratch;
    eachAgentName(sample, scratch, [&](std::string_view name) { names.emplace(name); });
    return names;
}

inline World worldOf(std::vector<ProcRow> rows) { return {.rows = std::move(rows), .selfPID = 4000, .uid = someUser}; }

}  // namespace tolvane::fakes
