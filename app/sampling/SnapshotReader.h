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

/// Reads one snapshot after the other, each compared with the one before. Confined to one thread at a time, but for
/// the construction. `host` outlives it.
class SnapshotReader {
public:
    /// Takes a first reading of the cores, so that the first snapshot already has an interval.
    explicit SnapshotReader(Host& host);

    /// Always gives a snapshot: what cannot be read is empty.
    Snapshot read(const std::vector<Activation>& activations);

private:
    /// One moment on both clocks.
    struct Reading {
        Date date;
        Seconds steady{0};
    };

    CPULoad readLoad();
    /// Whether somebody set the clock since the snapshot before.
    bool followClock(Date now);

    Host& host_;
    const std::string home_;
    const CoreLayout layout_;
    const std::unique_ptr<ProcessInspection> inspection_;
    ProcessReader reader_;
    UsageTracker tracker_;
    ProjectLabels projects_;
    /// Of the latest snapshot.
    std::optional<Reading> latest_;
    /// Of each core at the latest reading.
    std::optional<std::vector<CPUTicks>> ticks_;
};

}  // namespace tolvane
