#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "core/json/Error.h"
#include "core/rules/ClaudeWorker.h"

/// The file in which one AI agent lists its background workers.
namespace tolvane::ClaudeRoster {

/// Reads the roster below the home folder. No file, or one that cannot be understood, is no workers; a missing file
/// costs one failed open. In ascending order of `shortID`. Any thread.
std::vector<ClaudeWorker> load(std::string_view home);

/// The workers in the bytes of a roster file. `hasPrompt` is asked once per worker, with its short identifier.
Result<std::vector<ClaudeWorker>, json::Error> parse(std::string_view data,
                                                     const std::function<bool(const std::string&)>& hasPrompt);

}  // namespace tolvane::ClaudeRoster
