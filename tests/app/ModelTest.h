#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/acts/Acts.h"
#include "app/model/AppModel.h"
#include "tests/fakes/Executors.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/KeptState.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {

/// A model on the fake host. Samples are taken within the call that asks for them.
struct ModelTest : testing::Test {
    static constexpr std::uint64_t MiB = 1'048'576;
    static constexpr std::uint64_t GiB = 1'073'741'824;

    fakes::TemporaryFolder folder;
    fakes::FakeHost fake;
    fakes::VirtualClock& clock = *fake.clock;
    fakes::FakeWorld& world = *fake.world;
    fakes::HeldJobs neverRun;
    ModelState* modelState = nullptr;
    std::unique_ptr<AppModel> model;

    ModelTest() { world.applicationSupport = folder.path().string(); }

    void start(const ExecutorFactory& makeExecutor = fakes::InlineExecutor::make) { make(false, makeExecutor); }
    /// Takes no samples, so what the test sets stays.
    void startStill() { make(false, neverRun.factory()); }
    void startDemo() { make(true, fakes::InlineExecutor::make); }
    void make(bool demo, const ExecutorFactory& makeExecutor) {
        model = std::make_unique<AppModel>(fake.host, *fake.windows, demo, makeExecutor, fakes::keptState(modelState));
    }

    /// True when at least one of them is at background priority now.
    bool lowerPriority(const std::vector<Pid>& pids) {
        return model->acts().lowerPriority({.title = "x", .pids = pids}).kind == Outcome::Kind::lowered;
    }

    /// Each tick lists the processes once.
    std::size_t ticks() const { return world.timesAsked("allPids"); }

    fakes::FakeProcess& addApp(Pid pid, const std::string& appPath) {
        auto& process = world.add(pid, "App");
        process.path = Text(appPath + "/Contents/MacOS/App");
        return process;
    }
    /// Makes the process use `percent` of a core over `span`.
    void burn(Pid pid, double percent, Seconds span) {
        const double nanos = percent / 100 * span.count() * 1e9 / world.nanosPerTick;
        world.find(pid)->usage->userTime += static_cast<std::uint64_t>(nanos);
    }
    const ProcRow* row(Pid pid) const {
        for (const auto& each : model->snapshot->rows) {
            if (each.id() == pid) return &each;
        }
        return nullptr;
    }
};

}  // namespace tolvane
