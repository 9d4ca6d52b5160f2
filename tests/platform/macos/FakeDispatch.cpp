#include "tests/platform/macos/FakeDispatch.h"

#include <gtest/gtest.h>

#include <utility>

namespace tolvane::machost {

namespace {

FakeSource& sourceOf(void* pointer) { return *static_cast<FakeSource*>(pointer); }

}  // namespace

Dispatch FakeDispatch::table() {
    auto calls = std::make_shared<DispatchCalls>();
    calls->create = [this](SourceKind kind, std::uintptr_t handle, unsigned long mask) -> void* {
        if (!givesSources) return nullptr;
        return &sources.emplace_back(FakeSource{.kind = kind, .handle = handle, .mask = mask});
    };
    calls->setContext = [](void* source, void* context) { sourceOf(source).context = context; };
    calls->setEventHandler = [](void* source, DispatchCalls::Handler handler) { sourceOf(source).event = handler; };
    calls->setCancelHandler = [](void* source, DispatchCalls::Handler handler) {
        sourceOf(source).cancelled = handler;
    };
    calls->setTimer = [](void* source, std::int64_t delay, std::uint64_t leeway) {
        EXPECT_FALSE(sourceOf(source).resumed);
        sourceOf(source).delay = delay;
        sourceOf(source).leeway = leeway;
    };
    calls->resume = [](void* source) { sourceOf(source).resumed = true; };
    calls->cancel = [](void* pointer) {
        auto& source = sourceOf(pointer);
        EXPECT_FALSE(source.cancelledOnce);
        source.cancelledOnce = true;
        source.cancelled(source.context);
    };
    calls->release = [](void* source) { sourceOf(source).released = true; };
    calls->catchSignal = [this](int signal) { caught[signal] = true; };
    calls->restoreSignal = [this](int signal) { caught[signal] = false; };
    return calls;
}

void FakeDispatch::fire(std::size_t index) {
    const auto& source = sources.at(index);
    if (source.resumed && !source.cancelledOnce) source.event(source.context);
}

void FakeDispatch::runMain() {
    for (const auto& job : std::exchange(jobs, {})) job();
}

}  // namespace tolvane::machost
