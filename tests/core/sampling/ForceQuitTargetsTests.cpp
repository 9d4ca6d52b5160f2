#include "core/sampling/ForceQuitTargets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ForceQuitTargets, ofNothingAreNone) { EXPECT_EQ(forceQuitTargets({}), ForceQuitTargets{}); }

TEST(ForceQuitTargets, aPidOfAnAppGoesWithTheApp) {
    const auto targets = forceQuitTargets({{.pids = {1, 2}, .isApp = true}, {.pids = {2, 3}, .isApp = false}});
    EXPECT_THAT(targets.apps, ElementsAre(1, 2));
    EXPECT_THAT(targets.others, ElementsAre(3));
}

TEST(ForceQuitTargets, anAppNamedLaterStillTakesItsPids) {
    const auto targets = forceQuitTargets({{.pids = {2, 3}, .isApp = false}, {.pids = {1, 2}, .isApp = true}});
    EXPECT_THAT(targets.apps, ElementsAre(1, 2));
    EXPECT_THAT(targets.others, ElementsAre(3));
}

TEST(ForceQuitTargets, keepTheOrderOfFirstAppearanceWithoutRepeats) {
    const auto targets = forceQuitTargets({{.pids = {9, 4, 9}, .isApp = false},
                                           {.pids = {8, 2, 8}, .isApp = true},
                                           {.pids = {4, 1}, .isApp = false},
                                           {.pids = {2, 5}, .isApp = true}});
    EXPECT_THAT(targets.apps, ElementsAre(8, 2, 5));
    EXPECT_THAT(targets.others, ElementsAre(9, 4, 1));
}

TEST(ForceQuitTargets, linesWithoutPidsAddNothing) {
    EXPECT_THAT(forceQuitTargets({{.pids = {}, .isApp = true}}).apps, IsEmpty());
}

}  // namespace
}  // namespace tolvane
