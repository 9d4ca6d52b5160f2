#include "core/sampling/Priority.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Date start{Seconds{790'000'000}};
constexpr Date noon{Seconds{800'000'000}};
constexpr Lowered loan{.start = start, .at = noon};

ProcRow rowOf(Pid pid, Date unusedSince, Date startTime = start) {
    ProcRow row;
    row.sample.pid = pid;
    row.sample.startTime = startTime;
    row.unusedSince = unusedSince;
    return row;
}

TEST(PriorityReview, ofNothingIsNothing) { EXPECT_EQ(Priority::review({}, {rowOf(10, noon)}), Priority::Review{}); }

TEST(PriorityReview, restoresWhatWasUsedSince) {
    EXPECT_THAT(Priority::review({{10, loan}}, {rowOf(10, noon + Seconds{1})}).restore, ElementsAre(10));
}

TEST(PriorityReview, leavesWhatWasNotUsedSince) {
    EXPECT_EQ(Priority::review({{10, loan}}, {rowOf(10, noon)}), Priority::Review{});
    EXPECT_EQ(Priority::review({{10, loan}}, {rowOf(10, noon - Seconds{1})}), Priority::Review{});
}

TEST(PriorityReview, anEndedProcessIsGone) {
    const auto review = Priority::review({{10, loan}}, {rowOf(11, noon + Seconds{1})});
    EXPECT_THAT(review.gone, ElementsAre(10));
    EXPECT_THAT(review.restore, IsEmpty());
}

TEST(PriorityReview, aReusedPidIsGone) {
    const auto review = Priority::review({{10, loan}}, {rowOf(10, noon + Seconds{9}, start + Seconds{1})});
    EXPECT_THAT(review.gone, ElementsAre(10));
    EXPECT_THAT(review.restore, IsEmpty());
}

TEST(PriorityReview, listsAreAscending) {
    const std::map<Pid, Lowered> lowered{{40, loan}, {30, loan}, {20, loan}, {10, loan}};
    const auto review = Priority::review(lowered, {rowOf(40, noon + Seconds{1}), rowOf(20, noon + Seconds{1})});
    EXPECT_THAT(review.restore, ElementsAre(20, 40));
    EXPECT_THAT(review.gone, ElementsAre(10, 30));
}

TEST(PriorityReview, ofRepeatedPidsTheFirstRowCounts) {
    EXPECT_EQ(Priority::review({{10, loan}}, {rowOf(10, noon), rowOf(10, noon + Seconds{1})}), Priority::Review{});
    EXPECT_THAT(Priority::review({{10, loan}}, {rowOf(10, noon + Seconds{1}), rowOf(10, noon)}).restore,
                ElementsAre(10));
}

}  // namespace
}  // namespace tolvane
