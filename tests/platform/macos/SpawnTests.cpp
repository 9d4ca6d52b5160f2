// Real children: what the host asks of `posix_spawn` is the same on every system, except the numbers of flags.

#include "platform/macos/kernel/Spawn.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <future>
#include <thread>

#include "platform/macos/kernel/SpawnedChildProcesses.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::Optional;

int statusOf(Pid pid) {
    int status = 0;
    ::waitpid(pid, &status, 0);
    return status;
}

SpawnRequest shell(const std::string& script) {
    return {.path = "/bin/sh", .arguments = {"sh", "-c", script}, .flags = POSIX_SPAWN_SETSID};
}

TEST(Spawn, outputGoesToTheEndOfTheLogAndErrorsWithIt) {
    const fakes::TemporaryFolder folder;
    folder.write("log", "before\n");
    auto request = shell("pwd; echo wrong >&2; cat");
    request.actions = {
        OpenFile{.descriptor = 0, .path = "/dev/null"},
        OpenFile{.descriptor = 1, .path = folder / "log", .flags = O_WRONLY | O_CREAT | O_APPEND, .mode = 0644},
        Duplicate{.source = 1, .descriptor = 2}, ChangeFolder{.path = "/"}};
    Pid pid = 0;
    ASSERT_EQ(spawn(request, &pid), 0);
    EXPECT_EQ(statusOf(pid), 0);
    EXPECT_EQ(folder.read("log"), "before\n/\nwrong\n");
}

TEST(Spawn, theChildLeadsASessionOfItsOwn) {
    Pid pid = 0;
    ASSERT_EQ(spawn(shell("exec sleep 60"), &pid), 0);
    EXPECT_EQ(::getsid(pid), pid);
    ::kill(pid, SIGKILL);
    statusOf(pid);
}

TEST(Spawn, theEnvironmentIsTheGivenOneAlone) {
    const fakes::TemporaryFolder folder;
    auto request = SpawnRequest{.path = "/usr/bin/env", .arguments = {"env"}, .environment = {"ONLY=this"}};
    request.actions = {OpenFile{.descriptor = 1, .path = folder / "out", .flags = O_WRONLY | O_CREAT, .mode = 0644}};
    Pid pid = 0;
    ASSERT_EQ(spawn(request, &pid), 0);
    statusOf(pid);
    EXPECT_EQ(folder.read("out"), "ONLY=this\n");
}

TEST(Spawn, aProgramThatIsNotThereIsAnError) {
    Pid pid = 0;
    EXPECT_EQ(spawn({.path = "/nowhere/program", .arguments = {"program"}}, &pid), ENOENT);
}

TEST(Spawn, aFolderThatIsNotThereIsAnError) {
    auto request = shell("exit 0");
    request.actions = {ChangeFolder{.path = "/nowhere"}};
    Pid pid = 0;
    EXPECT_EQ(spawn(request, &pid), ENOENT);
}

TEST(Spawn, programsAreNotSearchedFor) {
    Pid pid = 0;
    EXPECT_EQ(spawn({.path = "sh", .arguments = {"sh", "-c", "exit 0"}}, &pid), ENOENT);
}

class SpawnedChildProcessesTest : public ::testing::Test {
protected:
    SpawnedChildProcessesTest() { kernel_.calls.spawn = &spawn; }
    std::optional<std::string> run(const std::string& script) {
        return SpawnedChildProcesses(kernel_.table(), 0).run("/bin/sh", {"-c", script});
    }
    /// Runs the script until it has printed, then ends it; returns what its caller got.
    std::optional<std::string> endedWhile(const std::string& script) {
        SpawnedChildProcesses children(kernel_.table(), 0);
        const fakes::TemporaryFolder folder;
        auto caller = std::async(std::launch::async, [&] {
            return children.run("/bin/sh", {"-c", "cd '" + folder.path().native() + "'; " + script});
        });
        while (!std::filesystem::exists(folder / "begun")) std::this_thread::yield();
        children.end();
        return caller.get();
    }

    FakeKernel kernel_;
};

TEST_F(SpawnedChildProcessesTest, theEndComesAtOnceForWhoeverWaits) {
    EXPECT_FALSE(endedWhile("touch begun; exec sleep 600"));
    EXPECT_FALSE(endedWhile("exec >&- 2>&-; touch begun; exec sleep 600"));
}

TEST_F(SpawnedChildProcessesTest, afterTheEndNothingIsRun) {
    SpawnedChildProcesses children(kernel_.table(), 0);
    EXPECT_TRUE(children.run("/bin/sh", {"-c", "exit 0"}));
    children.end();
    EXPECT_FALSE(children.run("/bin/sh", {"-c", "exit 0"}));
}

TEST_F(SpawnedChildProcessesTest, aToolMayCloseItsOutputAndGoOn) {
    EXPECT_THAT(run("echo text; exec >&-; sleep 0.05; exit 0"), Optional(std::string("text\n")));
    EXPECT_FALSE(run("echo text; exec >&-; sleep 0.05; exit 1"));
}

TEST_F(SpawnedChildProcessesTest, tellsWhatMayBeRun) {
    EXPECT_TRUE(isExecutable("/bin/sh"));
    EXPECT_FALSE(isExecutable("/nowhere/tool"));
    EXPECT_FALSE(isExecutable("/dev/null"));
}

TEST_F(SpawnedChildProcessesTest, knowsThePlacesOfItsTools) {
    EXPECT_THAT(
        toolPlaces("docker", "/home/ada"),
        ::testing::ElementsAre("/usr/local/bin/docker", "/opt/homebrew/bin/docker", "/home/ada/.orbstack/bin/docker",
                               "/Applications/Docker.app/Contents/Resources/bin/docker"));
    EXPECT_THAT(toolPlaces("git", "/home/ada"), ::testing::ElementsAre("/usr/bin/git"));
    EXPECT_EQ(SpawnedChildProcesses(kernel_.table(), 0).find("no-such-tool"), std::nullopt);
}

TEST_F(SpawnedChildProcessesTest, takesTheFirstPlaceThatCanBeRun) {
    const fakes::TemporaryFolder home;
    const auto own = home / ".orbstack/bin/docker";
    const auto shared = home / "Applications/docker";
    home.write(".orbstack/bin/docker", "");
    home.write("Applications/docker", "");
    const std::vector<std::string> places = {home / "nowhere/docker", own, shared};
    EXPECT_EQ(firstExecutable(places), std::nullopt);
    std::filesystem::permissions(shared, std::filesystem::perms::owner_all);
    EXPECT_EQ(firstExecutable(places), shared);
    std::filesystem::permissions(own, std::filesystem::perms::owner_all);
    EXPECT_EQ(firstExecutable(places), own);
}

TEST_F(SpawnedChildProcessesTest, givesWhatTheToolPrintedAndDropsItsErrors) {
    EXPECT_THAT(run("printf 'a\\0b'; echo wrong >&2"), Optional(std::string("a\0b", 3)));
}

TEST_F(SpawnedChildProcessesTest, readsMoreThanAPipeHolds) {
    const auto text = run("head -c 300000 /dev/zero");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->size(), 300000U);
}

TEST_F(SpawnedChildProcessesTest, anotherStatusThanZeroIsNone) {
    EXPECT_FALSE(run("echo text; exit 3"));
    EXPECT_FALSE(run("kill -9 $$"));
}

TEST_F(SpawnedChildProcessesTest, aToolThatIsNotThereIsNone) {
    EXPECT_FALSE(SpawnedChildProcesses(kernel_.table(), 0).run("/nowhere/tool", {}));
}

TEST_F(SpawnedChildProcessesTest, theToolInheritsOurEnvironment) {
    ::setenv("TOLVANE_SPAWN_TEST", "inherited", 1);
    EXPECT_THAT(run("printf %s \"$TOLVANE_SPAWN_TEST\""), Optional(std::string("inherited")));
    ::unsetenv("TOLVANE_SPAWN_TEST");
}

TEST_F(SpawnedChildProcessesTest, namesTheDescriptorsThatTheToolKeeps) {
    SpawnRequest seen;
    kernel_.calls.spawn = [&](const SpawnRequest& request, Pid*) {
        seen = request;
        return ENOENT;
    };
    SpawnedChildProcesses(kernel_.table(), 0x4000).run("/bin/launchctl", {"list"});
    EXPECT_EQ(seen.path, "/bin/launchctl");
    EXPECT_THAT(seen.arguments, ::testing::ElementsAre("/bin/launchctl", "list"));
    EXPECT_EQ(seen.flags, 0x4000);
    ASSERT_EQ(seen.actions.size(), 3U);
    EXPECT_EQ(std::get<Duplicate>(seen.actions[0]), (Duplicate{.source = 0, .descriptor = 0}));
    EXPECT_EQ(std::get<Duplicate>(seen.actions[1]).descriptor, 1);
    EXPECT_EQ(std::get<OpenFile>(seen.actions[2]).descriptor, 2);
    EXPECT_EQ(std::get<OpenFile>(seen.actions[2]).path, "/dev/null");
}

}  // namespace
}  // namespace tolvane::machost
