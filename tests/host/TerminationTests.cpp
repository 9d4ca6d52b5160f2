#include <gmock/gmock.h>
#include <sys/wait.h>

#include <optional>
#include <vector>

#include "tests/host/RealModelTest.h"
#include "tests/platform/linux/Newcomer.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using linuxhost::ChildProcess;
using linuxhost::Newcomer;

constexpr unsigned nobody = 65534;
/// What a busy machine may add to a wait.
constexpr Seconds slack{5.0};

volatile sig_atomic_t asked = 0;
void noteSignal(int) { asked = 1; }

/// Without restarting what the signal interrupts.
void onTerminate(void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    ::sigaction(SIGTERM, &action, nullptr);
}

/// By a signal, and not by a handler, which the child's own exit could be.
bool wasKilled(Pid pid) {
    siginfo_t ended{};
    ::waitid(P_PID, static_cast<id_t>(pid), &ended, WEXITED | WNOHANG | WNOWAIT);
    return ended.si_pid == pid && ended.si_code == CLD_KILLED && ended.si_status == SIGKILL;
}

bool lives(Pid pid) {
    siginfo_t ended{};
    return ::waitid(P_PID, static_cast<id_t>(pid), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid == 0;
}

using RealTerminate = RealModelTest;

TEST_F(RealTerminate, aProcessThatNeedsThreeSecondsToEndGetsThem) {
    const ChildProcess child([](const Line& line) {
        onTerminate(noteSignal);
        live(line);
        ::sleep(asked != 0 ? 3 : 0);
    });
    ASSERT_TRUE(child.line().hear());
    start();
    ASSERT_TRUE(holds(child.pid()));
    const auto end = terminate({child.pid()});
    EXPECT_TRUE(end.gone);
    EXPECT_GE(end.took, 3s);
    EXPECT_LT(end.took, 3.5s + slack);
    EXPECT_FALSE(wasKilled(child.pid()));
    EXPECT_FALSE(lives(child.pid()));
}

TEST_F(RealTerminate, aProcessThatIgnoresTheSignalIsKilledAfterTenSeconds) {
    const ChildProcess child(liveOn);
    ASSERT_TRUE(child.line().hear());
    start();
    const auto end = terminate({child.pid()});
    EXPECT_TRUE(end.gone);
    EXPECT_GE(end.took, 10.3s);
    EXPECT_LT(end.took, 10.3s + slack);
    EXPECT_TRUE(wasKilled(child.pid()));
}

TEST_F(RealTerminate, aStoppedProcessIsKilledAfterTenSeconds) {
    const ChildProcess child(live);
    ASSERT_TRUE(child.line().hear());
    ASSERT_EQ(::kill(child.pid(), SIGSTOP), 0);
    start();
    const auto end = terminate({child.pid()});
    EXPECT_TRUE(end.gone);
    EXPECT_GE(end.took, 10.3s);
    EXPECT_TRUE(wasKilled(child.pid()));
}

TEST_F(RealTerminate, aZombieIsGone) {
    // This test is the parent, and does not reap the child until it is over.
    const ChildProcess child(live);
    ASSERT_TRUE(child.line().hear());
    start();
    ASSERT_TRUE(holds(child.pid()));
    const auto end = terminate({child.pid()});
    EXPECT_TRUE(end.gone);
    EXPECT_LT(end.took, 0.5s + slack);
    EXPECT_FALSE(lives(child.pid()));
    EXPECT_EQ(::kill(child.pid(), 0), 0);
}

TEST_F(RealTerminate, whatWasAZombieBeforeIsNoProcessOfTheSample) {
    const ChildProcess child([](const Line&) {});
    ASSERT_TRUE(linuxhost::runUntil([&] { return !lives(child.pid()); }));
    start();
    EXPECT_FALSE(holds(child.pid()));
    EXPECT_TRUE(terminate({child.pid()}).gone);
}

TEST_F(RealTerminate, anotherUsersProcessIsNotSignalledAndStaysAlive) {
    if (::getuid() != 0) GTEST_SKIP() << "only root can start another user's process";
    const ChildProcess child([](const Line& line) {
        if (::setresuid(nobody, nobody, nobody) != 0) ::_exit(1);
        live(line);
    });
    ASSERT_TRUE(child.line().hear());
    start();
    ASSERT_TRUE(holds(child.pid()));
    const auto end = terminate({child.pid()});
    EXPECT_FALSE(end.gone);
    EXPECT_GE(end.took, 10.3s);
    EXPECT_TRUE(lives(child.pid()));
}

TEST_F(RealTerminate, aProcessThatForksWhileItIsStoppedIsGoneAndItsHeirIsLeftAlone) {
    const ChildProcess child([](const Line& line) {
        onTerminate(noteSignal);
        live(line);
        if (::fork() != 0) ::_exit(0);
        ::setsid();
        line.tell();
        line.hear();
        line.tell();
    });
    ASSERT_TRUE(child.line().hear());
    start();
    const auto end = terminate({child.pid()});
    EXPECT_TRUE(end.gone);
    EXPECT_LT(end.took, 0.5s + slack);
    // The child with the reused pid has answered, and still answers after more than the time to the second signal.
    EXPECT_TRUE(child.line().hear());
    linuxhost::runFor(11s);
    child.line().tell();
    EXPECT_TRUE(child.line().hear());
}

TEST_F(RealTerminate, theRestOfAProcessGroupIsLeftAlone) {
    const ChildProcess leader([](const Line& line) {
        ::setpgid(0, 0);
        live(line);
    });
    ASSERT_TRUE(leader.line().hear());
    const ChildProcess member(live);
    ASSERT_TRUE(member.line().hear());
    ASSERT_EQ(::setpgid(member.pid(), leader.pid()), 0);
    start();
    EXPECT_TRUE(terminate({leader.pid()}).gone);
    EXPECT_FALSE(lives(leader.pid()));
    EXPECT_TRUE(lives(member.pid()));
    EXPECT_TRUE(terminate({member.pid()}).gone);
    EXPECT_FALSE(lives(member.pid()));
}

TEST_F(RealTerminate, severalEndTogetherEachInItsWay) {
    const ChildProcess quick(live);
    const ChildProcess deaf(liveOn);
    ASSERT_TRUE(quick.line().hear());
    ASSERT_TRUE(deaf.line().hear());
    start();
    const auto end = terminate({quick.pid(), deaf.pid()});
    EXPECT_TRUE(end.gone);
    EXPECT_FALSE(wasKilled(quick.pid()));
    EXPECT_TRUE(wasKilled(deaf.pid()));
}

TEST_F(RealTerminate, aNewcomerUnderTheNumberBeforeTheFirstSignalLivesOn) {
    ChildProcess child(live);
    ASSERT_TRUE(child.line().hear());
    start();
    const Pid number = child.pid();
    ASSERT_TRUE(holds(number));
    child.end();
    // The kernel records starts in hundredths of a second; no pid is reused within one.
    linuxhost::runFor(20ms);
    const Newcomer newcomer(number);
    if (!newcomer.isThere()) GTEST_SKIP() << "only root on a kernel from 5.5 on can choose a process's number";
    const auto end = terminate({number});
    EXPECT_TRUE(end.gone);
    EXPECT_LT(end.took, 0.5s + slack);
    linuxhost::runFor(200ms);
    EXPECT_TRUE(newcomer.lives());
}

TEST_F(RealTerminate, aNewcomerUnderTheNumberBetweenTheSignalsLivesOn) {
    ChildProcess child(liveOn);
    ASSERT_TRUE(child.line().hear());
    start();
    const Pid number = child.pid();
    const AnswerOf<bool> answer(areGone(model->acts().terminate({.title = "x", .pids = {number}})));
    linuxhost::runFor(1200ms);
    EXPECT_FALSE(answer.isThere());
    child.end();
    const Newcomer newcomer(number);
    if (!newcomer.isThere()) GTEST_SKIP() << "only root on a kernel from 5.5 on can choose a process's number";
    EXPECT_TRUE(linuxhost::runUntil([&] { return answer.isThere(); }, 3s));
    EXPECT_TRUE(answer.get().value_or(false));
    linuxhost::runFor(10s);
    EXPECT_TRUE(newcomer.lives());
}

TEST_F(RealTerminate, forceKillsWhatIgnoresTheOtherSignal) {
    const ChildProcess child(liveOn);
    ASSERT_TRUE(child.line().hear());
    start();
    const AnswerOf<std::vector<Outcome>> answer(model->acts().forceQuit({{.title = "x", .pids = {child.pid()}}}));
    EXPECT_TRUE(linuxhost::runUntil([&] { return wasKilled(child.pid()); }));
    EXPECT_TRUE(linuxhost::runUntil([&] { return answer.isThere(); }));
    EXPECT_THAT(answer.get(), testing::Optional(testing::ElementsAre(Outcome::of(Outcome::Kind::terminated, "x"))));
}

TEST_F(RealTerminate, aLineIsForceQuitWithAllItsProcesses) {
    const ChildProcess first(liveOn);
    const ChildProcess second(liveOn);
    ASSERT_TRUE(first.line().hear());
    ASSERT_TRUE(second.line().hear());
    start();
    model->acts().forceQuit({{.title = "Group", .pids = {first.pid(), second.pid()}}});
    EXPECT_TRUE(linuxhost::runUntil([&] { return wasKilled(first.pid()) && wasKilled(second.pid()); }));
}

}  // namespace
}  // namespace tolvane
