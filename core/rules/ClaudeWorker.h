#pragma once

#include <optional>
#include <string>

#include "base/Pid.h"

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
