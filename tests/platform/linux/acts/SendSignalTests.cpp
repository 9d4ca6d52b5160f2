#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <optional>
#include <thread>

#include "platform/linux/acts/LinuxProcessControl.h"
#include "platform/linux/processes/ProcStat.h"
#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/Newcomer.h"

namespace tolvane::linuxhost {
namespace {

using testing::eventually;
using Line = ChildProcess::Line;

constexpr unsigned nobody = 65534;

Date dateOfTicks(std::uint64_t ticks) { return Date{Seconds{static_cast<double>(ticks)}}; }

Incarnation incarnation(Pid pid) {
    const auto stat = readProcStat("/proc", pid);
    return {.pid = pid, .startTime = dateOfTicks(stat ? stat->startTicks : 0)};
}

char stateOf(Pid pid) {
    const auto stat = readProcStat("/proc", pid);
    return stat ? stat->state : '-';
}

/// Lives until a signal, or the test, ends it.
void waitForTheEnd(const Line& line) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    line.tell();
    while (line.hear()) {
    }
}

/// The signal that ended the child; 0 while it lives.
int endingSignal(Pid pid) {
    siginfo_t ended{};
    ::waitid(P_PID, static_cast<id_t>(pid), &ended, WEXITED | WNOHANG | WNOWAIT);
    return ended.si_pid == pid && ended.si_code == CLD_KILLED ? ended.si_status : 0;
}

struct SendSignal : ::testing::Test {
    LinuxProcessControl control{dateOfTicks};

    /// Whether the process still lives a while after the call that must not hit it.
    static bool livesOn(Pid pid) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return endingSignal(pid) == 0;
    }
};

TEST_F(SendSignal, reachesTheProcess) {
    for (const Signal signal : {Signal::terminate, Signal::kill}) {
        const ChildProcess child(waitForTheEnd);
        ASSERT_TRUE(child.line().hear());
        EXPECT_TRUE(control.send(signal, incarnation(child.pid())));
        EXPECT_TRUE(eventually([&] { return endingSignal(child.pid()) == static_cast<int>(signal); }));
    }
}

TEST_F(SendSignal, reachesNobodyUnderAnotherStartTime) {
    const ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    auto earlier = incarnation(child.pid());
    earlier.startTime -= Seconds{1};
    EXPECT_FALSE(control.send(Signal::terminate, earlier));
    EXPECT_FALSE(control.send(Signal::kill, earlier));
    EXPECT_TRUE(livesOn(child.pid()));
}

TEST_F(SendSignal, aNewcomerUnderTheNumberOfOneThatEndedIsNotHit) {
    ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    const auto target = incarnation(child.pid());
    child.end();
    std::optional<Newcomer> newcomer;
    // Two processes that began within one tick of the kernel's clock look alike.
    eventually([&] {
        newcomer.emplace(target.pid);
        return !newcomer->isThere() || incarnation(target.pid) != target;
    });
    if (!newcomer->isThere()) GTEST_SKIP() << "only root on a kernel from 5.5 on can choose a process's number";
    EXPECT_FALSE(control.send(Signal::terminate, target));
    EXPECT_FALSE(control.send(Signal::kill, target));
    EXPECT_TRUE(livesOn(target.pid));
}

TEST_F(SendSignal, aNewcomerThatComesBetweenTheCheckAndTheSignalIsNotHit) {
    for (const Signal signal : {Signal::terminate, Signal::kill}) {
        ChildProcess child(waitForTheEnd);
        ASSERT_TRUE(child.line().hear());
        const auto target = incarnation(child.pid());
        std::optional<Newcomer> newcomer;
        // The dates are compared after the process was opened: here another process takes the pid in between.
        LinuxProcessControl racing([&](std::uint64_t ticks) {
            child.end();
            newcomer.emplace(target.pid);
            return dateOfTicks(ticks);
        });
        EXPECT_FALSE(racing.send(signal, target));
        ASSERT_TRUE(newcomer);
        if (!newcomer->isThere()) GTEST_SKIP() << "only root on a kernel from 5.5 on can choose a process's number";
        EXPECT_TRUE(livesOn(target.pid));
    }
}

TEST_F(SendSignal, neverReachesAnotherUsersProcess) {
    if (::getuid() != 0) GTEST_SKIP() << "only root can start another user's process";
    const ChildProcess child([](const Line& line) {
        if (::setresuid(nobody, nobody, nobody) != 0) ::_exit(1);
        waitForTheEnd(line);
    });
    ASSERT_TRUE(child.line().hear());
    EXPECT_FALSE(control.send(Signal::terminate, incarnation(child.pid())));
    EXPECT_FALSE(control.send(Signal::kill, incarnation(child.pid())));
    EXPECT_TRUE(livesOn(child.pid()));
}

TEST_F(SendSignal, neverReachesItselfItsAncestorsOrThePidsBelow2) {
    ChildProcess child([](const Line&) {
        LinuxProcessControl own(dateOfTicks);
        for (const Pid pid : {-1, 0, 1, ::getpid(), ::getppid()}) {
            if (own.send(Signal::terminate, incarnation(pid))) ::_exit(2);
        }
        const auto parent = readProcStat("/proc", ::getppid());
        ::_exit(parent && own.send(Signal::kill, incarnation(parent->ppid)) ? 3 : 0);
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST_F(SendSignal, aZombieIsGone) {
    const ChildProcess child([](const Line&) {});
    const auto target = incarnation(child.pid());
    ASSERT_TRUE(eventually([&] { return stateOf(child.pid()) == 'Z'; }));
    EXPECT_FALSE(control.send(Signal::kill, target));
}

TEST_F(SendSignal, aProcessWhoseFirstThreadEndedIsNot) {
    const ChildProcess child([](const Line& line) {
        std::thread([line] {
            while (stateOf(::getpid()) != 'Z') std::this_thread::yield();
            waitForTheEnd(line);
        }).detach();
        ::syscall(SYS_exit, 0);
    });
    ASSERT_TRUE(child.line().hear());
    ASSERT_EQ(stateOf(child.pid()), 'Z');
    EXPECT_TRUE(control.send(Signal::terminate, incarnation(child.pid())));
    EXPECT_TRUE(eventually([&] { return endingSignal(child.pid()) == SIGTERM; }));
}

TEST_F(SendSignal, aStoppedProcessKeepsThePoliteSignalAndDiesOfTheOther) {
    const ChildProcess child(waitForTheEnd);
    ASSERT_TRUE(child.line().hear());
    ASSERT_EQ(::kill(child.pid(), SIGSTOP), 0);
    ASSERT_TRUE(eventually([&] { return stateOf(child.pid()) == 'T'; }));
    EXPECT_TRUE(control.send(Signal::terminate, incarnation(child.pid())));
    EXPECT_TRUE(livesOn(child.pid()));
    EXPECT_TRUE(control.send(Signal::kill, incarnation(child.pid())));
    EXPECT_TRUE(eventually([&] { return endingSignal(child.pid()) == SIGKILL; }));
}

TEST_F(SendSignal, leavesNoDescriptorOpen) {
    const ChildProcess child([](const Line& line) {
        ::signal(SIGTERM, SIG_IGN);
        waitForTheEnd(line);
    });
    ASSERT_TRUE(child.line().hear());
    const int before = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(before);
    for (int count = 0; count < 100; ++count) control.send(Signal::terminate, incarnation(child.pid()));
    const int after = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(after);
    EXPECT_EQ(after, before);
}

}  // namespace
}  // namespace tolvane::linuxhost
