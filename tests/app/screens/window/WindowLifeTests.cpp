#include "app/screens/window/WindowLife.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

using Closing = WindowLife::Closing;

TEST(WindowLife, withATrayTheProgramStaysWithoutAWord) {
    EXPECT_EQ((WindowLife{.trayIsShown = true, .secondStartOpens = true}.afterClosing()), Closing::stays);
    EXPECT_EQ((WindowLife{.trayIsShown = true}.afterClosing()), Closing::stays);
}

TEST(WindowLife, withoutATrayItStaysWhereAnotherStartReachesIt) {
    EXPECT_EQ((WindowLife{.secondStartOpens = true}.afterClosing()), Closing::staysUnseen);
    EXPECT_EQ(WindowLife{}.afterClosing(), Closing::quits);
}

TEST(WindowLife, opensAtEveryStartButTheSessionsWithATray) {
    EXPECT_TRUE(WindowLife{.trayIsShown = true}.opensAtStart(false));
    EXPECT_FALSE(WindowLife{.trayIsShown = true}.opensAtStart(true));
    EXPECT_TRUE(WindowLife{}.opensAtStart(true));
    EXPECT_TRUE(WindowLife{}.opensAtStart(false));
}

}  // namespace
}  // namespace tolvane
