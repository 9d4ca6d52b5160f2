#pragma once

#include <QCoroTask>
#include <memory>
#include <optional>
#include <vector>

#include "app/sampling/Activation.h"
#include "app/sampling/Snapshot.h"
#include "app/sampling/SnapshotReader.h"
#include "app/tasks/CancelSource.h"
#include "app/tasks/Executor.h"

namespace tolvane {

/// Takes samples away from the main thread, one at a time: a second request waits for the first. What it reads with
/// belongs to the executor's thread; only values go in and out. `host` outlives it.
class Sampler {
public:
    Sampler(Host& host, std::unique_ptr<Executor> executor);
    /// Ends all waits, then waits for the sample that runs.
    ~Sampler();
    Sampler(const Sampler&) = delete;
    Sampler& operator=(const Sampler&) = delete;

    /// `activations` are the applications that came to the front since the last sample. None only when the sampler
    /// went before the sample came; who gets none must not touch what may have gone with it.
    QCoro::Task<std::optional<Snapshot>> sample(std::vector<Activation> activations);

private:
    /// In this order, so that the waits end first and the reader goes last.
    std::unique_ptr<SnapshotReader> reader_;
    std::unique_ptr<Executor> executor_;
    CancelSource waits_;
};

}  // namespace tolvane
