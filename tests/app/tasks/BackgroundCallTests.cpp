#include "app/tasks/BackgroundCall.h"

#include <gtest/gtest.h>

#include <QCoroTask>

#include "app/tasks/CancelSource.h"
#include "tests/fakes/Executors.h"

namespace tolvane {
namespace {

struct OffMainTest : testing::Test {
    fakes::HeldJobs held;
    std::unique_ptr<Executor> executor = held.factory()();
    CancelSource source;
    int runs = 0;
    int resumed = 0;
    std::optional<std::unique_ptr<int>> result;

    QCoro::Task<> ask(Executor& where) {
        result = co_await BackgroundCall(where, [this] { return std::make_unique<int>(++runs); }, source.token());
        ++resumed;
    }
};

TEST_F(OffMainTest, givesWhatTheFunctionReturned) {
    ask(*executor);
    EXPECT_EQ(resumed, 0);
    held.runNext();
    EXPECT_EQ(resumed, 1);
    EXPECT_EQ(**result, 1);
}

TEST_F(OffMainTest, anExecutorMayRunItAtOnce) {
    fakes::InlineExecutor atOnce;
    ask(atOnce);
    EXPECT_EQ(resumed, 1);
    EXPECT_EQ(**result, 1);
}

TEST_F(OffMainTest, cancellingResumesAtOnceWithNone) {
    ask(*executor);
    source.cancel();
    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(result);
}

TEST_F(OffMainTest, aFunctionThatEndsAfterTheCancellationIsNotHeard) {
    ask(*executor);
    source.cancel();
    held.runNext();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(result);
}

TEST_F(OffMainTest, isNotBegunOnceCancelled) {
    source.cancel();
    ask(*executor);
    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(result);
    EXPECT_EQ(held.waiting(), 0U);
}

TEST_F(OffMainTest, anExecutorThatGoesFirstLeavesTheWaitToItsSource) {
    ask(*executor);
    executor.reset();
    EXPECT_EQ(resumed, 0);
    source.cancel();
    EXPECT_EQ(resumed, 1);
    EXPECT_FALSE(result);
}

}  // namespace
}  // namespace tolvane
