#include "app/sampling/Sampler.h"

#include <utility>

#include "app/tasks/BackgroundCall.h"

namespace tolvane {

Sampler::Sampler(Host& host, std::unique_ptr<Executor> executor)
    : reader_(std::make_unique<SnapshotReader>(host)), executor_(std::move(executor)) {}

Sampler::~Sampler() = default;

QCoro::Task<std::optional<Snapshot>> Sampler::sample(std::vector<Activation> activations) {
    auto read = [reader = reader_.get(), activations = std::move(activations)] { return reader->read(activations); };
    co_return co_await BackgroundCall(*executor_, std::move(read), waits_.token());
}

}  // namespace tolvane
