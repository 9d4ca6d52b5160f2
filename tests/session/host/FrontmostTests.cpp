#include <gmock/gmock.h>

#include <QElapsedTimer>

#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Desk.h"
#include "tests/session/host/WakeUps.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::ElementsAre;
using testing::fewestWakeUps;
using ::testing::IsEmpty;

struct FrontmostTest : ::testing::Test {
    Desk desk;
    Frontmost& frontmost = *desk.host.frontmost;
    std::string editor = desk.install("org.example.Editor", "plain");
    std::string viewer = desk.install("org.example.Viewer", "plain");
    std::vector<std::string> told;

    std::string inFront() const {
        const auto front = frontmost.current();
        return front ? front->appID.value_or("no identifier") : "nobody";
    }
};

}  // namespace

TEST_F(FrontmostTest, theActiveWindowsApplicationIsInFront) {
    EXPECT_TRUE(frontmost.canTell());
    desk.start("org.example.Editor", "plain");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Editor"; })) << inFront();
    EXPECT_EQ(frontmost.current()->appPath, editor);
    desk.start("org.example.Viewer", "plain");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Viewer"; })) << inFront();
}

TEST_F(FrontmostTest, anActivationIsToldWithin200Milliseconds) {
    const Pid first = desk.start("org.example.Editor", "plain");
    const Pid second = desk.start("org.example.Viewer", "plain");
    const auto kept = frontmost.onActivation([this](std::string path) { told.push_back(std::move(path)); });
    desk.activate(second);
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Viewer"; }));
    runFor(std::chrono::milliseconds(100));
    told.clear();
    QElapsedTimer elapsed;
    for (const Pid pid : {first, second, first}) {
        elapsed.start();
        const auto before = told.size();
        desk.activate(pid);
        EXPECT_TRUE(runUntil([&] { return told.size() > before; }));
        EXPECT_LT(elapsed.elapsed(), 200);
    }
    EXPECT_THAT(told, ElementsAre(editor, viewer, editor));
}

TEST_F(FrontmostTest, askingInBetweenSwallowsNoActivation) {
    const Pid first = desk.start("org.example.Editor", "plain");
    desk.start("org.example.Viewer", "plain");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Viewer"; }));
    const auto kept = frontmost.onActivation([this](std::string path) { told.push_back(std::move(path)); });
    desk.activate(first);
    for (int count = 0; count < 1000 && inFront() != "org.example.Editor"; ++count) continue;
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }, std::chrono::seconds(2)));
}

TEST_F(FrontmostTest, anotherWindowOfTheSameApplicationIsNoNews) {
    const Pid first = desk.start("org.example.Editor", "plain");
    desk.start("org.example.Editor", "plain");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Editor"; }));
    runFor(std::chrono::milliseconds(200));
    const auto kept = frontmost.onActivation([this](std::string path) { told.push_back(std::move(path)); });
    desk.activate(first);
    runFor(std::chrono::milliseconds(200));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FrontmostTest, whoEndsTheSubscriptionHearsNoMore) {
    const Pid first = desk.start("org.example.Editor", "plain");
    desk.start("org.example.Viewer", "plain");
    auto kept = frontmost.onActivation([this](std::string path) { told.push_back(std::move(path)); });
    runFor(std::chrono::milliseconds(100));
    told.clear();
    kept.reset();
    desk.activate(first);
    runFor(std::chrono::milliseconds(200));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FrontmostTest, aQuietDesktopCostsNoWakeUps) {
    desk.start("org.example.Editor", "plain");
    const auto kept = frontmost.onActivation([this](std::string path) { told.push_back(std::move(path)); });
    const auto clicks = desk.host.notifications->onClick([](const auto&) {});
    desk.host.notifications->post({.identifier = "1", .title = "t", .body = "b"});
    runFor(std::chrono::milliseconds(500));
    EXPECT_LE(fewestWakeUps(5), 2);
}

TEST(WakeUps, whatComesTwiceASecondIsSeenInEverySpan) {
    QTimer timer;
    timer.start(500);
    EXPECT_GE(fewestWakeUps(2), 4);
}

}  // namespace tolvane::linuxhost
