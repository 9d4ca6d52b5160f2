#pragma once

#include <optional>

#include "core/sampling/ProcSample.h"

namespace tolvane {

/// A process, with what follows from comparing readings and from other sources. Its `id` is the pid.
struct ProcRow {
    ProcSample sample;
    /// Percent of one core over the last interval: 100 is one full core, more is possible.
    double cpuPercent = 0;
    /// The same on performance cores.
    double perfPercent = 0;
    /// When the process was last used.
    Date unusedSince;
    /// The application that it belongs to, if any.
    std::optional<Text> appPath = std::nullopt;
    std::optional<Text> appID = std::nullopt;
    /// Root folder of the project that holds its working folder. Unset inside applications.
    std::optional<Text> project = std::nullopt;
    /// Label of the agent session that it belongs to.
    std::optional<Text> claudeSession = std::nullopt;

    Pid id() const { return sample.pid; }
    bool operator==(const ProcRow&) const = default;
};

}  // namespace tolvane
