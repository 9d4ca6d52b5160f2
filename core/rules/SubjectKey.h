#pragma once

#include <string>
#include <string_view>

#include "core/sampling/ProcSample.h"

/// Stable names of the subjects of rules. A process is named with its start time, so a reused pid is another subject.
namespace tolvane::SubjectKey {

/// "app:com.example.app"
std::string app(std::string_view appID);
/// "pid:4711:1778307200.25"
std::string process(const ProcSample& sample);
/// "agent:4711:1778307200.25"
std::string agent(const ProcSample& sample);
/// "claude:7f3a"
std::string worker(std::string_view shortID);

}  // namespace tolvane::SubjectKey
