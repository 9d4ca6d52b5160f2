#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Pid.h"
#include "base/Result.h"
#include "core/json/Error.h"

namespace tolvane {

/// One background worker listed in an agent's roster.
struct ClaudeWorker {
    /// Its key in the roster.
    std::string shortID;
    /// The name it was started with; absent when that is empty.
    std::optional<std::string> name;
    std::optional<std::string> cwd;
    /// The process that hosts the session.
    Pid hostPID = 0;
    /// The interactive process, if the roster names one.
    std::optional<Pid> replPID;
    /// Whether the session has received a prompt.
    bool hasPrompt = false;

    bool operator==(const ClaudeWorker&) const = default;
};

}  // namespace tolvane

/// The file in which one AI agent lists its background workers.
namespace tolvane::ClaudeRoster {

/// Reads the roster below the home folder, sorted by `shortID`. Empty when there is no file or it cannot be parsed; a
/// missing file costs one failed open. Any thread.
std::vector<ClaudeWorker> load(std::string_view home);

/// Parses the bytes of a roster file. Calls `hasPrompt` once per worker, with its short identifier.
Result<std::vector<ClaudeWorker>, json::Error> parse(std::string_view data,
                                                     const std::function<bool(const std::string&)>& hasPrompt);

}  // namespace tolvane::ClaudeRoster
