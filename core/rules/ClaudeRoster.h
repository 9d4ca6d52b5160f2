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

/// One background worker that an agent's roster lists.
struct ClaudeWorker {
    /// Its key in the roster.
    std::string shortID;
    /// The name given at its start; absent when empty.
    std::optional<std::string> name;
    std::optional<std::string> cwd;
    /// The process that hosts the session.
    Pid hostPID = 0;
    /// The interactive process, where the roster has one.
    std::optional<Pid> replPID;
    /// Whether the session has received a prompt.
    bool hasPrompt = false;

    bool operator==(const ClaudeWorker&) const = default;
};

}  // namespace tolvane

/// The file in which one AI agent lists its background workers.
namespace tolvane::ClaudeRoster {

/// Reads the roster below the home folder. No file, or one that cannot be understood, is no workers; a missing file
/// costs one failed open. In ascending order of `shortID`. Any thread.
std::vector<ClaudeWorker> load(std::string_view home);

/// The workers in the bytes of a roster file. `hasPrompt` is asked once per worker, with its short identifier.
Result<std::vector<ClaudeWorker>, json::Error> parse(std::string_view data,
                                                     const std::function<bool(const std::string&)>& hasPrompt);

}  // namespace tolvane::ClaudeRoster
