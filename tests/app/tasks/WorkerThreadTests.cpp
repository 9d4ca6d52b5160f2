#include "app/tasks/WorkerThread.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <latch>
#include <vector>

#include "tests/app/WaitUntil.h"

namespace tolvane {
namespace {

TEST(WorkerThread, runsJobsOnAThreadOfItsOwnAndTellsTheOwnersThread) {
    WorkerThread worker;
    std::thread::id ranOn;
    std::thread::id toldOn;
    bool told = false;
    worker.submit([&] { ranOn = std::this_thread::get_id(); },
                  [&] {
                      toldOn = std::this_thread::get_id();
                      told = true;
                  });
    ASSERT_TRUE(waitUntil([&] { return told; }));
    EXPECT_NE(ranOn, std::this_thread::get_id());
    EXPECT_EQ(toldOn, std::this_thread::get_id());
}

TEST(WorkerThread, runsThemOneAtATimeInTheirOrder) {
    WorkerThread worker;
    std::vector<int> ran;
    std::vector<int> told;
    std::atomic<int> running = 0;
    std::atomic<bool> overlapped = false;
    for (int number = 0; number < 500; ++number) {
        worker.submit(
            [&, number] {
                if (++running > 1) overlapped = true;
                ran.push_back(number);
                --running;
            },
            [&, number] { told.push_back(number); });
    }
    ASSERT_TRUE(waitUntil([&] { return told.size() == 500; }));
    EXPECT_EQ(ran, told);
    EXPECT_TRUE(std::ranges::is_sorted(ran));
    EXPECT_FALSE(overlapped);
}

TEST(WorkerThread, aJobMaySubmitTheNextOnceItIsTold) {
    WorkerThread worker;
    int told = 0;
    std::function<void()> next = [&] {
        if (++told < 50) worker.submit([] {}, next);
    };
    worker.submit([] {}, next);
    EXPECT_TRUE(waitUntil([&] { return told == 50; }));
}

TEST(WorkerThread, severalTellTheSameThreadAtOnce) {
    std::array<WorkerThread, 4> workers;
    int told = 0;
    for (int number = 0; number < 500; ++number) {
        for (WorkerThread& worker : workers) worker.submit([] {}, [&] { ++told; });
    }
    EXPECT_TRUE(waitUntil([&] { return told == 2000; }));
}

TEST(WorkerThread, letsGoOfWhatAJobHoldsBeforeItTells) {
    WorkerThread worker;
    auto held = std::make_shared<int>(1);
    bool told = false;
    worker.submit([held] {},
                  [&] {
                      EXPECT_EQ(held.use_count(), 1);
                      told = true;
                  });
    EXPECT_TRUE(waitUntil([&] { return told; }));
}

TEST(WorkerThread, endingItWaitsForTheJobThatRunsAndDropsTheOthers) {
    std::latch begun(1);
    std::atomic<bool> finished = false;
    std::atomic<bool> secondRan = false;
    bool told = false;
    {
        WorkerThread worker;
        worker.submit(
            [&] {
                begun.count_down();
                for (int turn = 0; turn < 1000; ++turn) std::this_thread::yield();
                finished = true;
            },
            [&] { told = true; });
        worker.submit([&] { secondRan = true; }, [&] { told = true; });
        begun.wait();
        // The second job waits behind the first unless the first has already ended.
    }
    EXPECT_TRUE(finished);
    QCoreApplication::processEvents();
    EXPECT_FALSE(told);
}

TEST(WorkerThread, endsWithoutEverHavingWorked) { const WorkerThread worker; }

TEST(WorkerThread, whatWasNotToldYetGoesWithIt) {
    auto held = std::make_shared<int>(1);
    {
        WorkerThread worker;
        std::latch done(1);
        worker.submit([&] { done.count_down(); }, [held] { FAIL() << "told after its end"; });
        done.wait();
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace tolvane
