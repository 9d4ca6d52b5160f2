#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "core/rules/World.h"
#include "core/sampling/SystemMemory.h"

namespace tolvane {

/// The moment of the machine that advice is given for. Refers to its parts, which must outlive it.
struct AdviceScene {
    const World& world;
    const SystemMemory& memory;
    /// Date of the reading.
    Date now;
    /// Looks up the TCP ports that processes listen on, by pid. May be slow: called last, for many pids at once, and
    /// once per pid.
    std::function<std::map<Pid, std::vector<int>>(const std::vector<Pid>&)> ports;
    /// Locale of all numbers and durations in the texts.
    std::string_view locale;
    /// Processes that the service manager runs.
    const std::set<Pid>& managed;
    /// What the user calls a simulated device.
    std::function<std::optional<std::string>(std::string_view device)> simulatorName;
};

}  // namespace tolvane
