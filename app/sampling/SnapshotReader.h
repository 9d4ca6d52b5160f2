#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/sampling/Activation.h"
#include "app/sampling/Snapshot.h"
#include "core/projects/ProjectLabels.h"
#include "core/sampling/ProcessReader.h"
#include "core/sampling/UsageTracker.h"
#include "platform/Host.h"

namespace tolvane {

/// Reads one snapshot after the other and compares each with the one before. Except for construction, confined to one
/// thread at a time. `host` outlives it.
class SnapshotReader {
public:
    /// Reads the cores once, so that the first snapshot already has an interval.
    explicit SnapshotReader(Host& host);

    /// Always returns a snapshot; fields that cannot be read are empty.
    Snapshot read(const std::vector<Activation>& activations);

private:
    /// One moment on both clocks.
    struct Reading {
        Date date;
        Seconds steady{0};
    };

    CPULoad readLoad();
    /// Whether the clock was set since the previous snapshot.
    bool followClock(Date now);

    Host& host_;
    const std::string home_;
    const CoreLayout layout_;
    const std::unique_ptr<ProcessInspection> inspection_;
    ProcessReader reader_;
    UsageTracker tracker_;
    ProjectLabels projects_;
    /// The time of the latest snapshot.
    std::optional<Reading> latest_;
    /// Ticks of each core at the latest reading.
    std::optional<std::vector<CPUTicks>> ticks_;
};

}  // namespace tolvane
