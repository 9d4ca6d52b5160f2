#include "app/tasks/Wait.h"

#include <gmock/gmock.h>

#include "tests/app/AnswerOf.h"
#include "tests/fakes/VirtualClock.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::Optional;

struct WaitTest : testing::Test {
    fakes::VirtualClock clock;
    std::stop_source source;
    bool holds = false;
    int asked = 0;

    AnswerOf<WaitEnd> wait(Seconds patience) {
        auto condition = [this] {
            ++asked;
            return holds;
        };
        return AnswerOf<WaitEnd>(waitUntil(clock, std::move(condition), patience, source.get_token()));
    }
};

TEST_F(WaitTest, aConditionThatHoldsIsNotWaitedFor) {
    holds = true;
    EXPECT_THAT(wait(10s).get(), Optional(WaitEnd::held));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(WaitTest, asksEveryHalfSecond) {
    const auto end = wait(10s);
    EXPECT_EQ(asked, 1);
    clock.advance(0.4s);
    EXPECT_EQ(asked, 1);
    clock.advance(0.1s);
    EXPECT_EQ(asked, 2);
    holds = true;
    clock.advance(0.4s);
    EXPECT_FALSE(end.isThere());
    clock.advance(0.1s);
    EXPECT_THAT(end.get(), Optional(WaitEnd::held));
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(WaitTest, asksALastTimeWhenPatienceIsOver) {
    const auto end = wait(10s);
    clock.advance(9.9s);
    EXPECT_FALSE(end.isThere());
    holds = true;
    clock.advance(0.1s);
    EXPECT_THAT(end.get(), Optional(WaitEnd::held));
}

TEST_F(WaitTest, patienceThatPassesInVainEndsTheWait) {
    const auto end = wait(10s);
    clock.advance(9.9s);
    EXPECT_FALSE(end.isThere());
    clock.advance(0.1s);
    EXPECT_THAT(end.get(), Optional(WaitEnd::patienceOver));
    EXPECT_EQ(asked, 21);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(WaitTest, cancellingEndsTheWaitWithoutAskingAgain) {
    const auto end = wait(10s);
    clock.advance(1s);
    EXPECT_EQ(asked, 3);
    source.request_stop();
    EXPECT_THAT(end.get(), Optional(WaitEnd::cancelled));
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(clock.waiting(), 0U);
}

}  // namespace
}  // namespace tolvane
