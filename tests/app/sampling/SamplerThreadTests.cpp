#include <gtest/gtest.h>

#include <QTimer>
#include <atomic>
#include <semaphore>
#include <thread>

#include "app/model/AppModel.h"
#include "app/sampling/Sampler.h"
#include "app/tasks/WorkerThread.h"
#include "tests/app/WaitUntil.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/ForwardingInspection.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

/// Observes the sweeps and lets a test hold one up.
struct Sweeps {
    std::atomic<int> begun = 0;
    std::atomic<int> running = 0;
    std::atomic<bool> overlapped = false;
    std::atomic<bool> onMainThread = false;
    std::atomic<bool> held = false;
    std::counting_semaphore<> gate{0};
    const std::thread::id mainThread = std::this_thread::get_id();

    void pass() {
        ++begun;
        begun.notify_all();
        if (++running > 1) overlapped = true;
        if (std::this_thread::get_id() == mainThread) onMainThread = true;
        if (held) gate.acquire();
        --running;
    }
    void waitForTheFirst() const { begun.wait(0); }
};

class WatchedInspection : public fakes::ForwardingInspection {
public:
    WatchedInspection(std::unique_ptr<ProcessInspection> inner, Sweeps& sweeps)
        : ForwardingInspection(std::move(inner)), sweeps_(sweeps) {}

    std::vector<Pid> allPids() override {
        sweeps_.pass();
        return ForwardingInspection::allPids();
    }

private:
    Sweeps& sweeps_;
};

/// Samples on the real worker; tests do not touch the fake world while it may run.
struct SamplerThreadTest : testing::Test {
    fakes::FakeHost fake;
    Sweeps sweeps;

    SamplerThreadTest() {
        for (Pid pid = 100; pid < 200; ++pid) fake.world->add(pid, "node").usage->footprint = 100 << 20;
        fake.host.makeInspection = [this, inner = fake.host.makeInspection] {
            return std::make_unique<WatchedInspection>(inner(), sweeps);
        };
    }

    std::unique_ptr<AppModel> startModel() { return std::make_unique<AppModel>(fake.host, *fake.windows, false); }
    void hold() { sweeps.held = true; }
    void letGo(int count = 1) {
        sweeps.held = false;
        sweeps.gate.release(count);
    }
};

TEST_F(SamplerThreadTest, requestsAreAnsweredOnTheAskersThreadOneAfterTheOther) {
    Sampler sampler(fake.host, std::make_unique<WorkerThread>());
    int answered = 0;
    bool onMainThread = true;
    const auto ask = [&]() -> QCoro::Task<> {
        const auto snapshot = co_await sampler.sample({{.appPath = "/Applications/Mail.app", .date = Date{}}});
        onMainThread = onMainThread && std::this_thread::get_id() == sweeps.mainThread;
        if (snapshot && snapshot->rows.size() == 100) ++answered;
    };
    for (int count = 0; count < 50; ++count) ask();
    ASSERT_TRUE(waitUntil([&] { return answered == 50; }));
    EXPECT_TRUE(onMainThread);
    EXPECT_FALSE(sweeps.onMainThread);
    EXPECT_FALSE(sweeps.overlapped);
    EXPECT_EQ(sweeps.begun, 50);
}

TEST_F(SamplerThreadTest, theEventLoopKeepsTurningWhileASlowSampleRuns) {
    hold();
    const auto model = startModel();
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start(0);
    ASSERT_TRUE(waitUntil([&] { return turns >= 100; }));
    EXPECT_TRUE(model->snapshot->rows.empty());
    letGo();
    EXPECT_TRUE(waitUntil([&] { return model->snapshot->rows.size() == 100; }));
}

TEST_F(SamplerThreadTest, theModelTicksAgainAndAgain) {
    const auto model = startModel();
    for (std::size_t count = 1; count <= 30; ++count) {
        ASSERT_TRUE(waitUntil([&] { return fake.clock->waiting() == 1; }));
        EXPECT_EQ(model->loadHistory->size(), count);
        EXPECT_EQ(model->historyFor({150}).size(), count);
        fake.clock->advance(60s);
    }
    EXPECT_FALSE(sweeps.onMainThread);
}

TEST_F(SamplerThreadTest, restartsDuringASampleQueueBehindIt) {
    hold();
    const auto model = startModel();
    sweeps.waitForTheFirst();
    fake.world->press();
    fake.world->press();
    letGo();
    ASSERT_TRUE(waitUntil([&] { return model->loadHistory->size() == 3; }));
    EXPECT_FALSE(sweeps.overlapped);
    EXPECT_EQ(fake.clock->waiting(), 1U);
}

TEST_F(SamplerThreadTest, aModelThatGoesDuringASampleWaitsForItAndHearsNothing) {
    hold();
    auto model = startModel();
    fake.world->press();
    sweeps.waitForTheFirst();
    std::jthread later([&] { letGo(); });
    model.reset();
    EXPECT_EQ(sweeps.running, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(fake.clock->waiting(), 0U);
}

TEST_F(SamplerThreadTest, aModelThatGoesWithASampleUndeliveredHearsNothing) {
    auto model = startModel();
    sweeps.waitForTheFirst();
    model.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(fake.clock->waiting(), 0U);
}

}  // namespace
}  // namespace tolvane
