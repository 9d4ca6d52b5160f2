#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

using PriorityLoansTest = ModelTest;

TEST_F(PriorityLoansTest, aLoweredProcessIsRemembered) {
    world.add(7, "node");
    start();
    clock.advance(10s);
    EXPECT_TRUE(lowerPriority({7}));
    const std::map<Pid, Lowered> expected{{7, {.start = row(7)->sample.startTime, .at = clock.now()}}};
    EXPECT_EQ(*model->lowered, expected);
}

TEST_F(PriorityLoansTest, loweringAgainMovesTheDate) {
    world.add(7, "node");
    start();
    lowerPriority({7});
    clock.advance(10s);
    EXPECT_TRUE(lowerPriority({7}));
    EXPECT_EQ(world.timesAsked("lower 7"), 2U);
    EXPECT_EQ(model->lowered->at(7).at, clock.now());
}

TEST_F(PriorityLoansTest, oneSuccessIsEnough) {
    world.add(7, "node");
    world.add(8, "vi");
    world.shielded = {7};
    start();
    EXPECT_TRUE(lowerPriority({7, 8}));
    EXPECT_EQ(world.timesAsked("lower 7"), 1U);
    EXPECT_FALSE(model->lowered->contains(7));
    EXPECT_TRUE(model->lowered->contains(8));
}

TEST_F(PriorityLoansTest, aHostThatRefusesLeavesNoLoan) {
    world.add(7, "node");
    world.shielded = {7};
    start();
    EXPECT_FALSE(lowerPriority({7}));
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(PriorityLoansTest, whatIsNotInTheSnapshotIsPassedOverWithoutACall) {
    start();
    world.add(7, "node");
    EXPECT_FALSE(lowerPriority({7}));
    EXPECT_EQ(world.timesAsked("lower 7"), 0U);
}

TEST_F(PriorityLoansTest, nothingToLowerIsNoSuccess) {
    start();
    EXPECT_FALSE(lowerPriority({}));
}

TEST_F(PriorityLoansTest, restoringGivesBackWhatWasTaken) {
    world.add(7, "node");
    start();
    lowerPriority({7});
    model->acts().restorePriority({7});
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(PriorityLoansTest, aProcessThatWasNotLoweredIsNeverRaised) {
    world.add(7, "node");
    start();
    model->acts().restorePriority({7});
    EXPECT_EQ(world.timesAsked("restore 7"), 0U);
}

TEST_F(PriorityLoansTest, aLoanEndsAlsoWhenTheHostRefusesToTakeItBack) {
    world.add(7, "node");
    start();
    lowerPriority({7});
    world.shielded = {7};
    model->acts().restorePriority({7});
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(PriorityLoansTest, quittingGivesEverythingBackOnce) {
    world.add(7, "node");
    world.add(8, "vi");
    start();
    lowerPriority({7, 8});
    model->prepareToQuit();
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
    EXPECT_EQ(world.timesAsked("restore 8"), 1U);
    model.reset();
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
}

TEST_F(PriorityLoansTest, aModelThatGoesGivesEverythingBack) {
    world.add(7, "node");
    start();
    lowerPriority({7});
    model.reset();
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
}

}  // namespace
}  // namespace tolvane
