#include "platform/linux/processes/LinuxProcessInspection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using namespace std::string_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::Le;
using testing::MockProc;
using testing::MockProcess;
using testing::Sweeper;

namespace {

constexpr int wholeRound = 16;

/// Two groups with a process each, swept until they are settled.
class GatedSweep : public ::testing::Test {
protected:
    GatedSweep() {
        proc_.mountGroups();
        proc_.setUsage("/a.scope", 100);
        proc_.setUsage("/b.scope", 100);
        proc_.put(first_);
        proc_.put(second_);
        inspection_ = proc_.inspection();
        sweeper_.emplace(*inspection_);
        settle();
    }

    /// Sweeps until neither pid is due for a re-check among the next sweeps.
    void settle() {
        while ((sweeps_ + 20) % wholeRound != 2) sweep();
    }
    void sweep() {
        ++sweeps_;
        proc_.accesses.clear();
        proc_.now += Seconds{1};
        sweeper_->sweep();
    }
    testing::Reading& readingOf(Pid pid) { return sweeper_->readings[pid]; }

    MockProc proc_;
    MockProcess first_{.pid = 20, .group = "/a.scope"};
    MockProcess second_{.pid = 21, .group = "/b.scope"};
    std::unique_ptr<LinuxProcessInspection> inspection_;
    std::optional<Sweeper> sweeper_;
    int sweeps_ = 0;
};

}  // namespace

TEST_F(GatedSweep, aStillGroupsProcessesAreNotRead) {
    EXPECT_EQ(inspection_->watchedGroups(), 2u);
    for (int count = 0; count < 6; ++count) {
        sweep();
        EXPECT_EQ(proc_.timesReadBelow(20), 0);
        EXPECT_EQ(proc_.timesReadBelow(21), 0);
        EXPECT_EQ(sweeper_->readings.size(), 2u);
    }
}

TEST_F(GatedSweep, aProcessOfAGroupThatRanIsRead) {
    first_.userTicks += 5;
    first_.anonymous = 5000;
    proc_.put(first_);
    sweep();
    EXPECT_EQ(readingOf(20).usage->userTime, 5u);
    proc_.setUsage("/a.scope", 101);
    sweep();
    EXPECT_EQ(readingOf(20).usage->userTime, 10u);
    EXPECT_EQ(readingOf(20).usage->footprint, 5000u * 1024);
    EXPECT_EQ(proc_.timesReadBelow(21), 0);
    sweep();
    EXPECT_EQ(proc_.timesReadBelow(20), 0);
}

TEST_F(GatedSweep, everyProcessIsRecheckedInFullOnceInSixteenSweeps) {
    first_.anonymous = 7;
    first_.folder = "/moved";
    proc_.put(first_);
    int read = 0;
    for (int count = 0; count < wholeRound; ++count) {
        sweep();
        read += proc_.timesRead("20/stat");
    }
    EXPECT_EQ(read, 1);
    EXPECT_EQ(readingOf(20).usage->footprint, 7u * 1024);
    EXPECT_EQ(readingOf(20).folder, "/moved");
}

TEST_F(GatedSweep, rareSweepsReadEverything) {
    first_.anonymous = 7;
    proc_.put(first_);
    proc_.now += Seconds{59};
    sweep();
    EXPECT_EQ(readingOf(20).usage->footprint, 7u * 1024);
    EXPECT_EQ(proc_.timesRead("21/status"), 1);
}

TEST_F(GatedSweep, aChangeOfFolderWithoutAnythingElseIsSeenWithinFourSweeps) {
    first_.folder = "/moved";
    proc_.put(first_);
    for (std::uint64_t count = 1; count <= 4; ++count) {
        proc_.setUsage("/a.scope", 100 + count);
        sweep();
    }
    EXPECT_EQ(readingOf(20).folder, "/moved");
}

TEST_F(GatedSweep, aProcessThatMovedToAnotherGroupIsFollowed) {
    first_.group = "/b.scope";
    proc_.put(first_);
    for (int count = 0; count < wholeRound; ++count) sweep();
    EXPECT_EQ(inspection_->watchedGroups(), 1u);
    EXPECT_EQ(proc_.timesRead("20/stat"), 1);
}

TEST_F(GatedSweep, aNewProcessIsReadInFullTwice) {
    proc_.put({.pid = 25, .group = "/a.scope"});
    sweep();
    EXPECT_EQ(proc_.timesRead("25/cgroup"), 1);
    sweep();
    EXPECT_EQ(proc_.timesRead("25/cgroup"), 1);
    EXPECT_EQ(proc_.timesRead("25/status"), 1);
    sweep();
    EXPECT_EQ(proc_.timesReadBelow(25), 0);
}

TEST_F(GatedSweep, aReusedPidInAGroupThatRanIsAnotherProcess) {
    proc_.put({.pid = 20, .comm = "new", .startTicks = 7777, .group = "/a.scope"});
    proc_.setUsage("/a.scope", 500);
    sweep();
    EXPECT_EQ(readingOf(20).bsd->name, "new");
    sweep();
    EXPECT_EQ(proc_.timesRead("20/cgroup"), 1);
}

TEST_F(GatedSweep, aChildWhoseParentLeftIsRead) {
    proc_.put({.pid = 24, .group = "/b.scope"});
    first_.ppid = 24;
    proc_.setUsage("/a.scope", 200);
    proc_.put(first_);
    sweep();
    sweep();
    EXPECT_EQ(readingOf(20).bsd->ppid, 24);
    proc_.remove(24);
    first_.ppid = 1;
    proc_.put(first_);
    sweep();
    EXPECT_EQ(readingOf(20).bsd->ppid, 1);
    EXPECT_EQ(proc_.timesRead("20/stat"), 1);
    EXPECT_EQ(proc_.timesReadBelow(21), 0);
}

TEST_F(GatedSweep, aChildWhoseParentBecameAZombieIsRead) {
    MockProcess parent{.pid = 15, .group = "/b.scope"};
    proc_.put(parent);
    first_.ppid = 15;
    proc_.put(first_);
    proc_.setUsage("/a.scope", 200);
    sweep();
    sweep();
    parent.state = 'Z';
    proc_.put(parent);
    proc_.setUsage("/b.scope", 200);
    first_.ppid = 1;
    proc_.put(first_);
    sweep();
    EXPECT_FALSE(readingOf(15).bsd);
    EXPECT_EQ(readingOf(20).bsd->ppid, 1);
}

TEST_F(GatedSweep, movingMemoryOpensTheGateForOneSweep) {
    proc_.write("vmstat", "pswpin 0\npswpout 0\n");
    inspection_ = proc_.inspection();
    sweeper_.emplace(*inspection_);
    sweeps_ = 0;
    settle();
    proc_.write("vmstat", "pswpin 0\npswpout 5\n");
    first_.residentPages = 50;
    first_.anonymous = 100;
    first_.swapped = 300;
    proc_.put(first_);
    sweep();
    EXPECT_EQ(proc_.timesRead("20/stat"), 1);
    EXPECT_EQ(proc_.timesRead("21/stat"), 1);
    EXPECT_EQ(proc_.timesRead("21/status"), 0);
    EXPECT_EQ(readingOf(20).memory->compressed, 300u * 1024);
    sweep();
    EXPECT_EQ(proc_.timesReadBelow(20), 0);
}

TEST_F(GatedSweep, waitingForMemoryOpensTheGateForOneSweep) {
    proc_.write("pressure/memory", "some avg10=0.00 avg60=0.00 avg300=0.00 total=5\n");
    inspection_ = proc_.inspection();
    sweeper_.emplace(*inspection_);
    sweeps_ = 0;
    settle();
    proc_.write("pressure/memory", "some avg10=0.00 avg60=0.00 avg300=0.00 total=6\n");
    sweep();
    EXPECT_EQ(proc_.timesRead("20/stat"), 1);
    sweep();
    EXPECT_EQ(proc_.timesRead("20/stat"), 0);
}

TEST_F(GatedSweep, aGroupThatCannotBeReadIsNotGated) {
    proc_.put({.pid = 25, .group = "/gone.scope"});
    sweep();
    sweep();
    sweep();
    EXPECT_EQ(proc_.timesRead("25/stat"), 1);
    EXPECT_EQ(proc_.timesReadBelow(21), 0);
}

TEST_F(GatedSweep, theRootAndWhatLiesOutsideAreNotGated) {
    proc_.put({.pid = 25, .group = "/"});
    proc_.put({.pid = 26, .group = "/../outside"});
    proc_.setUsage("/", 1);
    sweep();
    sweep();
    sweep();
    EXPECT_EQ(proc_.timesRead("25/stat"), 1);
    EXPECT_EQ(proc_.timesRead("26/stat"), 1);
    EXPECT_EQ(inspection_->watchedGroups(), 2u);
}

TEST_F(GatedSweep, threadsInGroupsOfTheirOwnCountAtTheProcessesGroup) {
    proc_.setUsage("/vm.scope", 1);
    proc_.setUsage("/vm.scope/emulator", 1);
    proc_.writeGroupFile("/vm.scope/emulator", "cgroup.type", "threaded\n");
    proc_.writeGroupFile("/vm.scope", "cgroup.type", "domain threaded\n");
    proc_.put({.pid = 25, .group = "/vm.scope/emulator"});
    sweep();
    sweep();
    proc_.setUsage("/vm.scope", 2);
    sweep();
    EXPECT_EQ(proc_.timesRead("25/stat"), 1);
    sweep();
    EXPECT_EQ(proc_.timesRead("25/stat"), 0);
}

TEST_F(GatedSweep, aGroupWithoutMembersIsLetGo) {
    proc_.remove(20);
    sweep();
    EXPECT_EQ(inspection_->watchedGroups(), 1u);
    proc_.put(first_);
    sweep();
    EXPECT_EQ(inspection_->watchedGroups(), 2u);
}

TEST_F(GatedSweep, withOneGroupThereIsNoGate) {
    proc_.remove(20);
    sweep();
    sweep();
    EXPECT_EQ(proc_.timesRead("21/stat"), 1);
}

TEST_F(GatedSweep, whenDescriptorsRunOutGroupsAreNotGatedAndNothingFails) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit few = before;
    few.rlim_cur = 64;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    for (Pid pid = 100; pid < 200; ++pid) {
        const std::string group = "/many-" + std::to_string(pid) + ".scope";
        proc_.setUsage(group, 1);
        proc_.put({.pid = pid, .group = group});
    }
    inspection_ = proc_.inspection();
    sweeper_.emplace(*inspection_);
    for (int count = 0; count < 4; ++count) sweep();
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(sweeper_->readings.size(), 102u);
    EXPECT_EQ(proc_.timesRead("150/stat"), 1);
}

}  // namespace tolvane::linuxhost
