#include <gmock/gmock.h>

#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Desk.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::SizeIs;

}  // namespace

TEST(NoManager, nobodyCanTellWhoIsInFront) {
    Desk desk;
    desk.install("org.example.Editor", "plain");
    desk.start("org.example.Editor", "plain");
    EXPECT_FALSE(desk.host.frontmost->canTell());
    EXPECT_EQ(desk.host.frontmost->current(), std::nullopt);
}

TEST(NoManager, windowsAreClosedAllTheSame) {
    Desk desk;
    desk.install("org.example.Editor", "plain");
    const Pid pid = desk.start("org.example.Editor", "plain");
    const auto running = desk.host.running->withAppID("org.example.Editor");
    ASSERT_THAT(running, SizeIs(1));
    running.front()->terminate();
    EXPECT_TRUE(desk.hasEnded(pid));
}

TEST(NoManager, unsavedWorkIsLeftAloneAllTheSame) {
    Desk desk;
    desk.install("org.example.Editor", "unsaved");
    const Pid pid = desk.start("org.example.Editor", "unsaved");
    const auto running = desk.host.running->withAppID("org.example.Editor");
    ASSERT_THAT(running, SizeIs(1));
    running.front()->terminate();
    runFor(std::chrono::seconds(7));
    EXPECT_TRUE(desk.isRunning(pid));
}

}  // namespace tolvane::linuxhost
