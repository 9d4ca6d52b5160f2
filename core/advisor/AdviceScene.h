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

/// What advice is given on: one moment of the machine. Refers to its parts, which outlive it.
struct AdviceScene {
    const World& world;
    const SystemMemory& memory;
    /// Of the reading.
    Date now;
    /// TCP ports that processes listen on, under their pids. May be slow: asked last, for many at once, and once per
    /// pid.
    std::function<std::map<Pid, std::vector<int>>(const std::vector<Pid>&)> ports;
    /// Of all numbers and spans in the texts.
    std::string_view locale;
    /// Processes that the service manager runs.
    const std::set<Pid>& managed;
    /// What the user calls a simulated device.
    std::function<std::optional<std::string>(std::string_view device)> simulatorName;
};

}  // namespace tolvane
