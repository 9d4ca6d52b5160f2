#include "platform/linux/acts/LinuxChildProcesses.h"

#include <dirent.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>

#include "platform/linux/processes/ProcStat.h"
#include "tests/platform/linux/BornProgram.h"
#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using testing::eventually;
using testing::inheritableDescriptors;
using testing::signalsOf;

namespace {

class LinuxChildProcessesTest : public ::testing::Test {
protected:
    LinuxChildProcesses children;

    std::optional<std::string> shell(const std::string& script) { return children.run("/bin/sh", {"-c", script}); }
};

std::size_t openDescriptors() {
    const auto entries = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

bool isGone(Pid pid) {
    const auto stat = readProcStat("/proc", pid);
    return !stat || stat->isGone();
}

}  // namespace

TEST_F(LinuxChildProcessesTest, giveWhatTheToolPrinted) {
    EXPECT_EQ(children.run("/bin/echo", {"a b", "$HOME"}), "a b $HOME\n");
    EXPECT_EQ(shell("true"), "");
}

TEST_F(LinuxChildProcessesTest, giveNothingForAFailure) {
    EXPECT_EQ(shell("echo printed; exit 3"), std::nullopt);
    EXPECT_EQ(shell("echo printed; kill -9 $$"), std::nullopt);
    EXPECT_EQ(children.run("/nowhere/tool", {}), std::nullopt);
    EXPECT_EQ(children.run("/etc/passwd", {}), std::nullopt);
}

TEST_F(LinuxChildProcessesTest, dropWhatItSaysOnStandardError) { EXPECT_EQ(shell("echo out; echo err >&2"), "out\n"); }

TEST_F(LinuxChildProcessesTest, readMoreThanAPipeHolds) {
    const auto printed = shell("head -c 3000000 /dev/zero");
    ASSERT_TRUE(printed);
    EXPECT_EQ(printed->size(), 3'000'000U);
}

TEST_F(LinuxChildProcessesTest, passTheEnvironmentOn) {
    ::setenv("TOLVANE_TEST_PASSED_ON", "yes", 1);
    EXPECT_EQ(shell("echo $TOLVANE_TEST_PASSED_ON"), "yes\n");
    ::unsetenv("TOLVANE_TEST_PASSED_ON");
}

TEST_F(LinuxChildProcessesTest, hearTheWholeOfAToolThatEndsLate) {
    EXPECT_EQ(shell("echo first; sleep 0.05; echo last"), "first\nlast\n");
    // It closes its output, and is waited for anyway.
    EXPECT_EQ(shell("echo only; exec >&-; sleep 0.05; exit 4"), std::nullopt);
}

TEST_F(LinuxChildProcessesTest, leakNoDescriptorAndNoZombie) {
    shell("true");
    const auto before = openDescriptors();
    for (int round = 0; round < 20; ++round) {
        shell("exit 1");
        children.run("/nowhere/tool", {});
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(LinuxChildProcessesTest, theToolHasNoDescriptorOfOurs) {
    // One descriptor is the listing's own.
    EXPECT_EQ(shell("ls /proc/self/fd | wc -l"), std::to_string(inheritableDescriptors() + 1) + "\n");
}

TEST_F(LinuxChildProcessesTest, theToolIsBornWithoutOurSignals) {
    sigset_t all{};
    ::sigfillset(&all);
    sigset_t before{};
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    auto* const pipeBefore = std::signal(SIGPIPE, SIG_IGN);
    const auto status = children.run("/bin/cat", {"/proc/self/status"});
    std::signal(SIGPIPE, pipeBefore);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ASSERT_TRUE(status);
    EXPECT_EQ(signalsOf(*status, "SigBlk"), 0U);
    EXPECT_EQ(signalsOf(*status, "SigIgn"), 0U);
}

TEST_F(LinuxChildProcessesTest, knowWhatCanBeRun) {
    const TemporaryFolder folder;
    EXPECT_TRUE(isExecutable("/bin/sh"));
    EXPECT_FALSE(isExecutable("/etc/passwd"));
    EXPECT_FALSE(isExecutable("/nowhere/tool"));
    EXPECT_FALSE(isExecutable("/tmp")) << "a folder";
    const auto script = folder.write("tool", "#!/bin/sh\necho it ran\n");
    EXPECT_FALSE(isExecutable(script));
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    EXPECT_TRUE(isExecutable(script));
    EXPECT_EQ(children.run(script, {}), "it ran\n");
}

TEST_F(LinuxChildProcessesTest, knowThePlacesOfTheirTools) {
    EXPECT_THAT(toolPlaces("docker", ""), ::testing::ElementsAre("/usr/local/bin/docker", "/usr/bin/docker"));
    EXPECT_THAT(toolPlaces("docker", "/home/ada/bin::relative:/usr/bin"),
                ::testing::ElementsAre("/home/ada/bin/docker", "/usr/bin/docker", "/usr/local/bin/docker"));
    EXPECT_EQ(children.find("no-such-tool"), std::nullopt);
    EXPECT_EQ(children.find("git").has_value(), isExecutable("/usr/bin/git"));
}

TEST(LinuxChildProcesses, aToolOfTheUsersOwnComesFirst) {
    const TemporaryFolder folder;
    const auto client = folder.write("bin/docker", "#!/bin/sh\n");
    LinuxChildProcesses children(folder.at("bin") + ":/usr/bin");
    EXPECT_NE(children.find("docker"), client) << "not executable yet";
    std::filesystem::permissions(client, std::filesystem::perms::owner_all);
    EXPECT_EQ(children.find("docker"), client);
}

class EndedWhileRunning : public ::testing::TestWithParam<const char*> {};

TEST_P(EndedWhileRunning, aToolThatHangsIsKilledAndHoldsNobodyUp) {
    const TemporaryFolder folder;
    auto children = std::make_unique<LinuxChildProcesses>();
    std::optional<std::string> printed = "not yet";
    std::jthread caller(
        [&] { printed = children->run("/bin/sh", {"-c", "echo $$ > " + folder.at("pid") + "; " + GetParam()}); });
    ASSERT_TRUE(eventually([&] { return folder.read("pid").ends_with('\n'); }));
    const Pid tool = std::stoi(folder.read("pid"));
    EXPECT_FALSE(isGone(tool));
    children->end();
    caller.join();
    EXPECT_EQ(printed, std::nullopt);
    EXPECT_TRUE(eventually([&] { return isGone(tool); }));
    EXPECT_EQ(children->run("/bin/echo", {"later"}), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(WorkerTools, EndedWhileRunning,
                         ::testing::Values("exec sleep 600", "trap '' TERM INT HUP; while :; do sleep 1; done",
                                           "exec >&-; exec sleep 600"));

TEST(WorkerToolsAtTheEnd, whatRunsEndsWithTheHost) {
    const TemporaryFolder folder;
    auto children = std::make_unique<LinuxChildProcesses>();
    std::jthread caller([tools = children.get(), &folder] {
        tools->run("/bin/sh", {"-c", "echo $$ > " + folder.at("pid") + "; exec sleep 600"});
    });
    ASSERT_TRUE(eventually([&] { return folder.read("pid").ends_with('\n'); }));
    const Pid tool = std::stoi(folder.read("pid"));
    children.reset();
    EXPECT_TRUE(eventually([&] { return isGone(tool); }));
}

TEST(WorkerTools, runBesideEachOther) {
    const TemporaryFolder folder;
    LinuxChildProcesses children;
    std::jthread waiting([&] {
        children.run("/bin/sh", {"-c", "while [ ! -e " + folder.at("go") + " ]; do sleep 0.01; done; echo > " +
                                           folder.at("went")});
    });
    EXPECT_EQ(children.run("/bin/echo", {"beside"}), "beside\n");
    EXPECT_FALSE(folder.has("went"));
    folder.write("go", "");
    waiting.join();
    EXPECT_TRUE(folder.has("went"));
}

}  // namespace tolvane::linuxhost
