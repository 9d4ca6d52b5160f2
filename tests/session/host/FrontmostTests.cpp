#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tests/platform_linux/EventLoop.h"
#include "tests/session/host/Desk.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// How often this process was taken up again after it had waited, all its threads together.
long long wakeUps() {
    long long count = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream file(thread.path() / "status");
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("voluntary_ctxt_switches:")) count += std::stoll(line.substr(24));
        }
    }
    return count;
}

/// Of two seconds that end with an alarm of the test's own, with nothing else to do for the loop.
long long wakeUpsOfTwoSeconds() {
    QTimer alarm;
    bool isOver = false;
    QObject::connect(&alarm, &QTimer::timeout, [&] { isOver = true; });
    alarm.setSingleShot(true);
    alarm.start(2000);
    const auto before = wakeUps();
    while (!isOver) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return wakeUps() - before;
}

/// Of the quietest among some spans. What was on its way, the start of a daemon above all, falls into the first ones;
/// what comes again and again falls into each.
long long fewestWakeUps(int spans) {
    auto fewest = wakeUpsOfTwoSeconds();
    for (int count = 1; count < spans && fewest > 1; ++count) fewest = std::min(fewest, wakeUpsOfTwoSeconds());
    return fewest;
}

struct FrontmostTest : ::testing::Test {
    Desk desk;
    Frontmost& frontmost = *desk.host.frontmost;
    std::string editor = desk.install("org.example.Editor", "plain");
    std::string viewer = desk.install("org.example.Viewer", "plain");
    std::vector<std::string> told;

    std::string inFront() const {
        const auto front = frontmost.current();
        return front ? front->bundleIdentifier.value_or("no identifier") : "nobody";
    }
};

}  // namespace

TEST_F(FrontmostTest, theActiveWindowsApplicationIsInFront) {
    EXPECT_TRUE(frontmost.canTell());
    desk.start("org.example.Editor", "plain");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Editor"; })) << inFront();
    EXPECT_EQ(frontmost.current()->bundlePath, editor);
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
