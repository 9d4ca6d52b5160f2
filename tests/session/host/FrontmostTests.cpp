#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <fstream>
#include <iterator>

#include "tests/platform_linux/EventLoop.h"
#include "tests/session/host/Desk.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// How often this process was taken up again after it had waited.
long long wakeUps() {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("voluntary_ctxt_switches:")) return std::stoll(line.substr(24));
    }
    return -1;
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
    // Without a timer of the test's own: the loop must have nothing to do but this one alarm.
    QTimer alarm;
    bool isOver = false;
    QObject::connect(&alarm, &QTimer::timeout, [&] { isOver = true; });
    alarm.setSingleShot(true);
    alarm.start(2000);
    const auto before = wakeUps();
    while (!isOver) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_LE(wakeUps() - before, 3);
}

}  // namespace tolvane::linuxhost
