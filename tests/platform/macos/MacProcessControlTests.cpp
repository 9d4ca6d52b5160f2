#include "platform/macos/kernel/MacProcessControl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::Pair;

class MacProcessControlTest : public ::testing::Test {
protected:
    MacProcessControlTest() {
        kernel_.add(1, "launchd", 0, 0);
        kernel_.add(800, "Terminal");
        kernel_.add(850, "zsh", 800);
        kernel_.add(900, "tolvane", 850);
        kernel_.add(950, "node", 850);
        kernel_.add(960, "mysqld", 1, 74);
    }
    MacProcessControl control() { return MacProcessControl(kernel_.table()); }
    Incarnation life(Pid pid) const {
        const auto& info = kernel_.processes.at(pid).info;
        return {.pid = pid, .startTime = startedAt(info.startSeconds, info.startMicroseconds)};
    }
    /// None of the three acts may touch it.
    void expectUntouched(const Incarnation& process) {
        EXPECT_FALSE(control().send(Signal::kill, process));
        EXPECT_FALSE(control().lowerPriority(process));
        EXPECT_FALSE(control().restorePriority(process));
        EXPECT_THAT(kernel_.signals, IsEmpty());
        EXPECT_THAT(kernel_.priorities, IsEmpty());
    }

    FakeKernel kernel_;
};

TEST_F(MacProcessControlTest, signalsReachTheProcess) {
    EXPECT_TRUE(control().send(Signal::terminate, life(950)));
    EXPECT_TRUE(control().send(Signal::kill, life(950)));
    EXPECT_THAT(kernel_.signals, ElementsAre(Pair(950, 15), Pair(950, 9)));
}

TEST_F(MacProcessControlTest, aSignalThatTheKernelRefusesWasNotSent) {
    kernel_.calls.sendSignal = [](Pid, int) { return failing(EPERM); };
    EXPECT_FALSE(control().send(Signal::kill, life(950)));
}

TEST_F(MacProcessControlTest, priorityIsLoweredAndGivenBackInDarwinsWords) {
    EXPECT_TRUE(control().lowerPriority(life(950)));
    EXPECT_TRUE(control().restorePriority(life(950)));
    EXPECT_THAT(kernel_.priorities, ElementsAre(ElementsAre(4, 950, 4096), ElementsAre(4, 950, 0)));
}

TEST_F(MacProcessControlTest, aPriorityThatTheKernelRefusesIsUnchanged) {
    kernel_.calls.setPriority = [](int, std::uint32_t, int) { return failing(EPERM); };
    EXPECT_FALSE(control().lowerPriority(life(950)));
    EXPECT_FALSE(control().restorePriority(life(950)));
}

TEST_F(MacProcessControlTest, aReusedPidIsNotTouched) {
    auto earlier = life(950);
    earlier.startTime -= Seconds{1e-6};
    expectUntouched(earlier);
}

TEST_F(MacProcessControlTest, aProcessThatIsGoneIsNotTouched) {
    const auto gone = life(950);
    kernel_.processes.erase(950);
    expectUntouched(gone);
}

TEST_F(MacProcessControlTest, aProcessOfAnotherUserIsNotTouched) { expectUntouched(life(960)); }

TEST_F(MacProcessControlTest, thisProgramAndItsAncestorsAreNotTouched) {
    for (const Pid pid : {900, 850, 800, 1}) expectUntouched(life(pid));
}

TEST_F(MacProcessControlTest, groupsAndTheKernelAreNotTouched) {
    for (const Pid pid : {0, -1, -950}) expectUntouched({.pid = pid, .startTime = life(950).startTime});
}

TEST_F(MacProcessControlTest, aRingOfParentsHasAnEnd) {
    kernel_.processes[850].info.ppid = 900;
    EXPECT_TRUE(control().send(Signal::terminate, life(950)));
}

TEST_F(MacProcessControlTest, aProgramStartsInItsOwnSessionWithItsLog) {
    const DetachedStart program{.executable = "/opt/bin/node",
                                .args = {"node", "a.js"},
                                .environment = {"A=1"},
                                .workingDirectory = "/home/ada/src",
                                .log = "/home/ada/site.log"};
    EXPECT_THAT(control().start(program), Optional(4711));
    const SpawnRequest expected{
        .path = "/opt/bin/node",
        .arguments = {"node", "a.js"},
        .environment = {"A=1"},
        .actions = {OpenFile{.descriptor = 0, .path = "/dev/null", .flags = 0, .mode = 0},
                    OpenFile{.descriptor = 1, .path = "/home/ada/site.log", .flags = 521, .mode = 420},
                    Duplicate{.source = 1, .descriptor = 2}, ChangeFolder{.path = "/home/ada/src"}},
        .flags = 1024};
    EXPECT_THAT(kernel_.spawned, ElementsAre(expected));
}

TEST_F(MacProcessControlTest, withoutArgumentsTheExecutableIsTheOnlyOne) {
    control().start({.executable = "/opt/bin/node"});
    EXPECT_THAT(kernel_.spawned.at(0).arguments, ElementsAre("/opt/bin/node"));
    EXPECT_THAT(kernel_.spawned.at(0).environment, IsEmpty());
}

TEST_F(MacProcessControlTest, aProgramThatCannotBeStartedIsNone) {
    kernel_.calls.spawn = [](const SpawnRequest&, Pid*) { return ENOENT; };
    EXPECT_FALSE(control().start({.executable = "/opt/bin/gone"}));
}

}  // namespace
}  // namespace tolvane::machost
