#include "platform/linux/acts/LinuxProcessControl.h"

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>

#include <filesystem>
#include <thread>
#include <vector>

#include "base/files/Files.h"
#include "platform/linux/processes/ProcStat.h"
#include "tests/platform/linux/ChildProcess.h"

namespace tolvane::linuxhost {

using ::testing::Each;
using ::testing::SizeIs;

namespace {

using Line = ChildProcess::Line;

constexpr int idleDisk = 3 << 13;
constexpr unsigned nobody = 65534;
constexpr ThreadPriority ordinary{.policy = SCHED_OTHER, .disk = 0};

Date dateOfTicks(std::uint64_t ticks) { return Date{Seconds{static_cast<double>(ticks)}}; }

Incarnation incarnation(Pid pid) {
    const auto stat = readProcStat("/proc", pid);
    return {.pid = pid, .startTime = dateOfTicks(stat ? stat->startTicks : 0)};
}

std::vector<ThreadPriority> prioritiesOf(Pid pid) {
    std::vector<ThreadPriority> priorities;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task"))
        priorities.push_back(priorityOf(std::stoi(entry.path().filename())).value());
    return priorities;
}

/// What a process has while this program's user holds a loan on it.
ThreadPriority low(Pid pid) {
    return {.policy = holdsRightToRaise() || limitAllowsToRaise(pid) ? SCHED_IDLE : SCHED_BATCH, .disk = idleDisk};
}

void waitForTheEnd(const Line& line) {
    line.tell();
    line.hear();
}

/// A process with three threads that starts one more each time the test tells it to.
void runThreads(const Line& line) {
    std::vector<std::thread> threads;
    const auto start = [&] { threads.emplace_back([] { ::pause(); }); };
    start();
    start();
    line.tell();
    while (line.hear()) {
        start();
        line.tell();
    }
    ::_exit(0);
}

bool needsRoot() { return ::getuid() != 0; }

}  // namespace

TEST(LinuxProcessControl, lowersEveryThreadAndGivesBack) {
    const ChildProcess child(runThreads);
    ASSERT_TRUE(child.line().hear());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), SizeIs(3));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(low(child.pid())));
    EXPECT_TRUE(control.restorePriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(ordinary));
}

TEST(LinuxProcessControl, threadsBornMeanwhileGetWhatTheProcessHad) {
    const ChildProcess child(runThreads);
    ASSERT_TRUE(child.line().hear());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(incarnation(child.pid())));
    child.line().tell();
    ASSERT_TRUE(child.line().hear());
    EXPECT_THAT(prioritiesOf(child.pid()), SizeIs(4));
    EXPECT_TRUE(control.restorePriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(ordinary));
}

TEST(LinuxProcessControl, loweringTwiceKeepsWhatWasThereAtFirst) {
    const ChildProcess child(runThreads);
    ASSERT_TRUE(child.line().hear());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(incarnation(child.pid())));
    child.line().tell();
    ASSERT_TRUE(child.line().hear());
    EXPECT_TRUE(control.lowerPriority(incarnation(child.pid())));
    EXPECT_TRUE(control.restorePriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(ordinary));
}

TEST(LinuxProcessControl, childrenBornMeanwhileGetItBackToo) {
    const ChildProcess child([](const Line& line) {
        line.tell();
        line.hear();
        const ChildProcess grandchild(waitForTheEnd);
        grandchild.line().hear();
        line.tell();
        line.hear();
    });
    ASSERT_TRUE(child.line().hear());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(incarnation(child.pid())));
    child.line().tell();
    ASSERT_TRUE(child.line().hear());
    const std::string pid = std::to_string(child.pid());
    const auto children = Files::readKernelFile("/proc/" + pid + "/task/" + pid + "/children", 65536);
    if (!children || children->empty()) GTEST_SKIP() << "this kernel does not list children";
    const Pid grandchild = std::stoi(*children);
    EXPECT_THAT(prioritiesOf(grandchild), Each(low(grandchild)));
    EXPECT_TRUE(control.restorePriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(grandchild), Each(ordinary));
}

TEST(LinuxProcessControl, whatWasLowBeforeStaysLow) {
    const ChildProcess child([](const Line& line) {
        const sched_param none{};
        ::sched_setscheduler(0, SCHED_BATCH, &none);
        ::syscall(SYS_ioprio_set, 1, 0, (2 << 13) | 7);
        waitForTheEnd(line);
    });
    ASSERT_TRUE(child.line().hear());
    const auto before = prioritiesOf(child.pid());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(low(child.pid())));
    EXPECT_TRUE(control.restorePriority(incarnation(child.pid())));
    EXPECT_EQ(prioritiesOf(child.pid()), before);
}

TEST(LinuxProcessControl, whatTheProcessChangesMeanwhileStays) {
    const ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(incarnation(child.pid())));
    ASSERT_EQ(::syscall(SYS_ioprio_set, 1, child.pid(), (2 << 13) | 5), 0);
    EXPECT_TRUE(control.restorePriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(ThreadPriority{.policy = SCHED_OTHER, .disk = (2 << 13) | 5}));
}

TEST(LinuxProcessControl, aReusedPidIsNotTouched) {
    const ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    Incarnation earlier = incarnation(child.pid());
    earlier.startTime -= Seconds{1};
    LinuxProcessControl control(dateOfTicks);
    EXPECT_FALSE(control.lowerPriority(earlier));
    EXPECT_FALSE(control.restorePriority(earlier));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(ordinary));
}

TEST(LinuxProcessControl, aProcessThatEndedIsGone) {
    ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    const Incarnation process = incarnation(child.pid());
    LinuxProcessControl control(dateOfTicks);
    ASSERT_TRUE(control.lowerPriority(process));
    ::kill(child.pid(), SIGKILL);
    siginfo_t ended{};
    ::waitid(P_PID, static_cast<id_t>(child.pid()), &ended, WEXITED | WNOWAIT);
    EXPECT_FALSE(control.restorePriority(process));
    EXPECT_FALSE(control.lowerPriority(process));
    child.wait();
    EXPECT_FALSE(control.lowerPriority(process));
}

TEST(LinuxProcessControl, aProcessThatWasNotLoweredIsNotRestored) {
    const ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    EXPECT_FALSE(LinuxProcessControl(dateOfTicks).restorePriority(incarnation(child.pid())));
}

TEST(LinuxProcessControl, neverTouchesItselfItsAncestorsOrThePidsBelow2) {
    LinuxProcessControl control(dateOfTicks);
    for (const Pid pid : {-1, 0, 1, ::getpid(), ::getppid()})
        EXPECT_FALSE(control.lowerPriority(incarnation(pid))) << pid;
    EXPECT_THAT(prioritiesOf(::getpid()), Each(ordinary));
}

TEST(LinuxProcessControl, neverTouchesAnotherUsersProcess) {
    if (needsRoot()) GTEST_SKIP() << "only root can start another user's process";
    const ChildProcess child([](const Line& line) {
        if (::setresuid(nobody, nobody, nobody) != 0) ::_exit(1);
        waitForTheEnd(line);
    });
    ASSERT_TRUE(child.line().hear());
    EXPECT_FALSE(LinuxProcessControl(dateOfTicks).lowerPriority(incarnation(child.pid())));
    EXPECT_THAT(prioritiesOf(child.pid()), Each(ordinary));
}

TEST(LinuxProcessControl, anOrdinaryUserCanPayBack) {
    if (needsRoot()) GTEST_SKIP() << "the other tests run as an ordinary user already";
    ChildProcess user([](const Line&) {
        if (::setresuid(nobody, nobody, nobody) != 0) ::_exit(1);
        const ChildProcess child(waitForTheEnd);
        if (!child.line().hear() || holdsRightToRaise() || limitAllowsToRaise(child.pid())) ::_exit(2);
        LinuxProcessControl control(dateOfTicks);
        const ThreadPriority expected{.policy = SCHED_BATCH, .disk = idleDisk};
        if (!control.lowerPriority(incarnation(child.pid()))) ::_exit(3);
        if (prioritiesOf(child.pid()) != std::vector{expected}) ::_exit(4);
        if (!control.restorePriority(incarnation(child.pid()))) ::_exit(5);
        if (prioritiesOf(child.pid()) != std::vector{ordinary}) ::_exit(6);
    });
    EXPECT_EQ(user.wait(), 0);
}

TEST(LoweredPriority, takesTimeAndDisk) {
    EXPECT_EQ(lowered(ordinary, Background::batch), (ThreadPriority{.policy = SCHED_BATCH, .disk = idleDisk}));
    EXPECT_EQ(lowered(ordinary, Background::idle), (ThreadPriority{.policy = SCHED_IDLE, .disk = idleDisk}));
}

TEST(LoweredPriority, leavesRealTimeAlone) {
    const ThreadPriority audio{.policy = SCHED_FIFO, .disk = (1 << 13) | 4};
    EXPECT_EQ(lowered(audio, Background::batch), audio);
    EXPECT_EQ(lowered(audio, Background::idle), audio);
}

TEST(LoweredPriority, neverRaises) {
    const ThreadPriority idle{.policy = SCHED_IDLE, .disk = idleDisk};
    EXPECT_EQ(lowered(idle, Background::batch), idle);
}

TEST(LoweredPriority, keepsThatChildrenDoNotInherit) {
    EXPECT_EQ(lowered({.policy = SCHED_OTHER | SCHED_RESET_ON_FORK, .disk = 0}, Background::batch).policy,
              SCHED_BATCH | SCHED_RESET_ON_FORK);
}

}  // namespace tolvane::linuxhost
