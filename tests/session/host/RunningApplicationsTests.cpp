#include <gmock/gmock.h>
#include <signal.h>

#include <QElapsedTimer>
#include <filesystem>
#include <fstream>

#include "tests/platform/linux/EventLoop.h"
#include "tests/session/host/Desk.h"

namespace tolvane::linuxhost {

namespace {

using testing::Desk;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;

constexpr const char* editor = "org.example.Editor";

struct RunningApplicationsTest : ::testing::Test {
    Desk desk;
    RunningApplications& running = *desk.host.running;

    std::shared_ptr<RunningApplication> only() const {
        const auto all = running.withAppID(editor);
        EXPECT_THAT(all, SizeIs(1));
        return all.empty() ? nullptr : all.front();
    }
    std::optional<std::string> open(const std::string& path) const {
        bool isTold = false;
        std::optional<std::string> result;
        running.openInBackground(path, [&](std::optional<std::string> error) {
            isTold = true;
            result = std::move(error);
        });
        EXPECT_TRUE(runUntil([&] { return isTold; }));
        return result;
    }
};

}  // namespace

TEST_F(RunningApplicationsTest, anApplicationIsFoundByItsIdentifier) {
    const std::string path = desk.install(editor, "plain");
    EXPECT_THAT(running.withAppID(editor), IsEmpty());
    EXPECT_THAT(running.withAppID("org.example.Unknown"), IsEmpty());
    desk.start(editor, "plain");
    EXPECT_EQ(only()->appPath(), path);
    EXPECT_FALSE(only()->isTerminated());
}

TEST_F(RunningApplicationsTest, oneWithNothingUnsavedEnds) {
    desk.install(editor, "plain");
    const Pid pid = desk.start(editor, "plain");
    const auto application = only();
    application->terminate();
    EXPECT_TRUE(desk.hasEnded(pid));
    EXPECT_TRUE(application->isTerminated());
    EXPECT_THAT(running.withAppID(editor), IsEmpty());
}

TEST_F(RunningApplicationsTest, anEditorWithUnsavedChangesIsLeftAlone) {
    desk.install(editor, "unsaved");
    const Pid pid = desk.start(editor, "unsaved");
    const auto application = only();
    application->terminate();
    runFor(std::chrono::seconds(8));
    EXPECT_TRUE(desk.isRunning(pid));
    EXPECT_FALSE(application->isTerminated());
}

TEST_F(RunningApplicationsTest, oneThatHidesInTheTrayIsToldToEnd) {
    desk.install(editor, "tray");
    const Pid pid = desk.start(editor, "tray");
    only()->terminate();
    runFor(std::chrono::seconds(1));
    EXPECT_TRUE(desk.isRunning(pid));
    EXPECT_TRUE(desk.hasEnded(pid));
}

TEST_F(RunningApplicationsTest, oneWithoutWindowsIsToldToEnd) {
    desk.install(editor, "windowless");
    const Pid pid = desk.start(editor, "windowless");
    EXPECT_TRUE(runUntil([&] { return !running.withAppID(editor).empty(); }));
    only()->terminate();
    EXPECT_TRUE(desk.hasEnded(pid));
}

TEST_F(RunningApplicationsTest, aWindowThatKnowsNothingOfClosingIsNoReasonToStay) {
    desk.install(editor, "stubborn");
    const Pid pid = desk.start(editor, "stubborn");
    only()->terminate();
    EXPECT_TRUE(desk.hasEnded(pid));
}

TEST_F(RunningApplicationsTest, forceDoesNotAsk) {
    desk.install(editor, "unsaved");
    const Pid pid = desk.start(editor, "unsaved");
    only()->forceTerminate();
    EXPECT_TRUE(desk.hasEnded(pid));
}

TEST_F(RunningApplicationsTest, instancesAreAskedApart) {
    desk.install(editor, "plain");
    const Pid first = desk.start(editor, "plain");
    const Pid second = desk.start(editor, "plain");
    const auto all = running.withAppID(editor);
    ASSERT_THAT(all, SizeIs(2));
    all.front()->terminate();
    EXPECT_TRUE(desk.hasEnded(first));
    EXPECT_TRUE(desk.isRunning(second));
    EXPECT_FALSE(all.back()->isTerminated());
}

TEST_F(RunningApplicationsTest, oneThatEndsWhileItIsAskedIsTerminated) {
    desk.install(editor, "plain");
    const Pid pid = desk.start(editor, "plain");
    const auto application = only();
    ::kill(pid, SIGKILL);
    application->terminate();
    application->forceTerminate();
    EXPECT_TRUE(desk.hasEnded(pid));
    EXPECT_TRUE(application->isTerminated());
    application->terminate();
}

TEST_F(RunningApplicationsTest, oneThatIsStartedAgainHasItsWindow) {
    const std::string path = desk.install(editor, "plain");
    const Pid old = desk.start(editor, "plain");
    const auto before = only();
    before->terminate();
    ASSERT_TRUE(desk.hasEnded(old));
    EXPECT_EQ(open(path), std::nullopt);
    ASSERT_TRUE(runUntil([&] { return desk.pidsOf(editor).size() == 1; }));
    const Pid fresh = desk.pidsOf(editor).front();
    EXPECT_TRUE(runUntil([&] { return desk.windowOf(fresh).has_value(); }));
    EXPECT_FALSE(only()->isTerminated());
    EXPECT_TRUE(before->isTerminated());
}

TEST_F(RunningApplicationsTest, whatCannotBeStartedSaysWhy) {
    const std::string path = desk.install(editor, "plain");
    std::ofstream(path) << "[Desktop Entry]\nType=Application\nName=Broken\nExec=/nowhere/at/all \"\n";
    EXPECT_NE(open(path), std::nullopt);
    std::filesystem::remove(path);
    EXPECT_THAT(open(path), Optional(HasSubstr("no longer installed")));
}

TEST_F(RunningApplicationsTest, aThousandEntriesAreNoBurden) {
    for (int count = 0; count < 1000; ++count) {
        const std::string name = "org.example.Other" + std::to_string(count);
        std::ofstream(std::string(std::getenv("XDG_DATA_HOME")) + "/applications/" + name + ".desktop")
            << "[Desktop Entry]\nType=Application\nName=Other\nExec=/usr/bin/other" << count << "\n";
    }
    desk.install(editor, "plain");
    const Pid pid = desk.start(editor, "plain");
    EXPECT_FALSE(only()->isTerminated());
    QElapsedTimer elapsed;
    elapsed.start();
    const auto application = only();
    EXPECT_LT(elapsed.elapsed(), 500);
    application->terminate();
    EXPECT_TRUE(desk.hasEnded(pid));
}

}  // namespace tolvane::linuxhost
