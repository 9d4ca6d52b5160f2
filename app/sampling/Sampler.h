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

/// Takes samples away from the main thread, one at a time: a second request waits for the first. The reader belongs to
/// the executor's thread; only values go in and out. `host` outlives it.
class Sampler {
public:
    Sampler(Host& host, std::unique_ptr<Executor> executor);
    /// Ends all waits, then blocks until the running sample is done.
    ~Sampler();
    Sampler(const Sampler&) = delete;
    Sampler& operator=(const Sampler&) = delete;

    /// `activations` are the applications that came to the front since the last sample. Returns nullopt only when the
    /// sampler was destroyed first; the caller must then not touch anything that may have gone with it.
    QCoro::Task<std::optional<Snapshot>> sample(std::vector<Activation> activations);

private:
    /// Declared in this order so that the waits end first and the reader goes last.
    std::unique_ptr<SnapshotReader> reader_;
    std::unique_ptr<Executor> executor_;
    CancelSource waits_;
};

}  // namespace tolvane
