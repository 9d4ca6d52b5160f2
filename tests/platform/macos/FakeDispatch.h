#pragma once

#include <deque>
#include <functional>
#include <map>
#include <vector>

#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

struct FakeSource {
    SourceKind kind = SourceKind::timer;
    std::uintptr_t handle = 0;
    unsigned long mask = 0;
    void* context = nullptr;
    DispatchCalls::Handler event = nullptr;
    DispatchCalls::Handler cancelled = nullptr;
    std::int64_t delay = -1;
    std::uint64_t leeway = 0;
    bool resumed = false;
    bool cancelledOnce = false;
    bool released = false;
};

/// Event sources that fire when the test says so, and a main thread that runs when the test says so.
class FakeDispatch {
public:
    Dispatch table();
    OnMain onMain() {
        return [this](std::function<void()> job) { jobs.push_back(std::move(job)); };
    }
    /// An event on the background queue. Sources that sleep or were cancelled are silent.
    void fire(std::size_t index);
    void runMain();

    std::deque<FakeSource> sources;
    std::vector<std::function<void()>> jobs;
    /// By signal: whether a handler takes it now.
    std::map<int, bool> caught;
    bool givesSources = true;
};

}  // namespace tolvane::machost
