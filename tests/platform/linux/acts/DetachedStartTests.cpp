#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>

#include "platform/linux/acts/LinuxProcessControl.h"
#include "platform/linux/processes/ProcStat.h"
#include "tests/platform/linux/BornProgram.h"
#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using testing::eventually;
using testing::inheritableDescriptors;
using testing::signalsOf;

namespace {

bool isGone(Pid pid) {
    const auto stat = readProcStat("/proc", pid);
    return !stat || stat->isGone();
}

class DetachedStartTest : public ::testing::Test {
protected:
    ~DetachedStartTest() override {
        for (const Pid pid : started) ::kill(pid, SIGKILL);
    }

    std::optional<Pid> start(const DetachedStart& program) {
        const auto pid = control.start(program);
        if (pid) started.push_back(*pid);
        return pid;
    }
    DetachedStart shell(const std::string& script) const {
        return {.executable = "/bin/sh",
                .args = {"sh", "-c", script},
                .environment = {},
                .workingDirectory = folder.path(),
                .log = folder.at("log")};
    }
    /// Starts it and waits for its end.
    void runToItsEnd(const DetachedStart& program) {
        const auto pid = start(program);
        ASSERT_TRUE(pid);
        ASSERT_TRUE(eventually([&] { return isGone(*pid); }));
    }

    TemporaryFolder folder;
    LinuxProcessControl control{[](std::uint64_t) { return Date{}; }};
    std::vector<Pid> started;
};

}  // namespace

TEST_F(DetachedStartTest, theProgramHasItsArgumentsAndEnvironmentAlone) {
    auto program = shell("");
    program.executable = "/bin/cat";
    program.args = {"a name of its own", "/proc/self/cmdline", "/proc/self/environ"};
    program.environment = {"B=2", "A=with = and spaces", "EMPTY=", "PATH=/usr/bin:/bin"};
    runToItsEnd(program);
    auto seen = folder.read("log");
    std::ranges::replace(seen, '\0', '|');
    EXPECT_EQ(seen,
              "a name of its own|/proc/self/cmdline|/proc/self/environ|"
              "B=2|A=with = and spaces|EMPTY=|PATH=/usr/bin:/bin|");
}

TEST_F(DetachedStartTest, theProgramRunsInItsFolder) {
    runToItsEnd(shell("pwd -P"));
    EXPECT_EQ(folder.read("log"), std::filesystem::canonical(folder.path()).string() + "\n");
}

TEST_F(DetachedStartTest, anEmptyEnvironmentIsEmpty) {
    auto program = shell("");
    program.executable = "/usr/bin/env";
    program.args = {"env"};
    runToItsEnd(program);
    EXPECT_EQ(folder.read("log"), "");
}

TEST_F(DetachedStartTest, withoutArgumentsTheExecutableIsTheOnlyOne) {
    auto program = shell("");
    program.executable = "/bin/cat";
    program.args = {};
    runToItsEnd(program);
    auto sleeping = shell("exec sleep 600");
    const auto script = folder.write("tool", "#!/bin/sh\necho \"$# $0\"\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    sleeping.executable = script;
    sleeping.args = {};
    runToItsEnd(sleeping);
    EXPECT_EQ(folder.read("log"), "0 " + script + "\n");
}

TEST_F(DetachedStartTest, outputAndErrorsLandAtTheEndOfTheLog) {
    folder.write("log", "of an earlier run\n");
    runToItsEnd(shell("echo said; echo wrong >&2"));
    runToItsEnd(shell("echo again"));
    EXPECT_EQ(folder.read("log"), "of an earlier run\nsaid\nwrong\nagain\n");
}

TEST_F(DetachedStartTest, aNewLogCanBeReadByAllAndWrittenByItsOwner) {
    const auto before = ::umask(022);
    runToItsEnd(shell("true"));
    ::umask(before);
    struct stat status{};
    ASSERT_EQ(::stat(folder.at("log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0644U);
}

TEST_F(DetachedStartTest, theProgramReadsNothingAndHasNoDescriptorOfOurs) {
    runToItsEnd(shell("cat; readlink /proc/self/fd/0; ls /proc/self/fd | wc -l"));
    // One descriptor is the listing's own; the first three are ours or the log.
    EXPECT_EQ(folder.read("log"), "/dev/null\n" + std::to_string(inheritableDescriptors() + 1) + "\n");
}

TEST_F(DetachedStartTest, theProgramIsBornWithoutOurSignals) {
    sigset_t all{};
    ::sigfillset(&all);
    sigset_t before{};
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    auto* const hangUpBefore = std::signal(SIGHUP, SIG_IGN);
    auto program = shell("");
    program.executable = "/bin/cat";
    program.args = {"cat", "/proc/self/status"};
    runToItsEnd(program);
    std::signal(SIGHUP, hangUpBefore);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(signalsOf(folder.read("log"), "SigBlk"), 0U);
    EXPECT_EQ(signalsOf(folder.read("log"), "SigIgn"), 0U);
}

TEST_F(DetachedStartTest, theProgramLeadsASessionAndIsNoChildOfOurs) {
    const auto pid = start(shell("exec sleep 600"));
    ASSERT_TRUE(pid);
    ASSERT_TRUE(eventually([&] {
        const auto stat = readProcStat("/proc", *pid);
        return stat && stat->ppid != ::getpid() && stat->session == *pid;
    }));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(DetachedStartTest, theProgramOutlivesWhoStartedIt) {
    ChildProcess starter([this](const ChildProcess::Line& line) {
        control.start(shell("echo $$; exec sleep 600"));
        line.tell();
        line.hear();
    });
    ASSERT_TRUE(starter.line().hear());
    ASSERT_TRUE(eventually([&] { return folder.read("log").ends_with('\n'); }));
    const Pid pid = std::stoi(folder.read("log"));
    started.push_back(pid);
    starter.end();
    const auto stat = readProcStat("/proc", pid);
    ASSERT_TRUE(stat);
    EXPECT_FALSE(stat->isGone());
}

TEST_F(DetachedStartTest, whatCannotBeStartedIsNone) {
    auto gone = shell("true");
    gone.executable = folder.at("gone");
    EXPECT_EQ(start(gone), std::nullopt);
    auto folderGone = shell("true");
    folderGone.workingDirectory = folder.at("gone");
    EXPECT_EQ(start(folderGone), std::nullopt);
    auto logless = shell("true");
    logless.log = folder.at("gone/log");
    EXPECT_EQ(start(logless), std::nullopt);
    auto noProgram = shell("true");
    noProgram.executable = "/etc/passwd";
    EXPECT_EQ(start(noProgram), std::nullopt);
    auto nothing = shell("true");
    nothing.executable.clear();
    EXPECT_EQ(start(nothing), std::nullopt);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(DetachedStartTest, aProgramThatDiesSoonCountsAsStarted) {
    const auto pid = start(shell("exit 7"));
    EXPECT_TRUE(pid);
}

}  // namespace tolvane::linuxhost
