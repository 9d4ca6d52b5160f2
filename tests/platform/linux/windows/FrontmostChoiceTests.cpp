#include "platform/linux/windows/FrontmostChoice.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "platform/linux/makeLinuxHost.h"
#include "platform/linux/processes/ProcFiles.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/windows/FakeAccessibility.h"
#include "tests/platform/linux/windows/FakeKWin.h"

extern char** environ;

namespace tolvane::linuxhost {

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::FakeKWin;
using ::testing::IsEmpty;
using testing::Launcher;
using testing::PrivateBus;
using testing::Registry;
using testing::Speaker;

/// A Wayland session whose compositor does not list its windows, with two applications: an editor, and this test.
struct FrontmostChoiceTest : ::testing::Test {
    TemporaryFolder home;
    PrivateBus session;
    std::string editor = describe("org.example.Editor", "/usr/bin/no-such-editor");
    std::string self = describe("org.example.Self", executableOf("/proc", ::getpid()));
    Host host = hostOf({});
    std::vector<std::string> told;
    Subscription kept;

    std::string describe(const std::string& identifier, const std::string& program) const {
        return home.write("data/applications/" + identifier + ".desktop",
                          "[Desktop Entry]\nType=Application\nName=" + identifier + "\nExec=" + program + "\n");
    }
    Host hostOf(std::map<std::string, std::string> more) const {
        std::map<std::string, std::string> variables = {{"HOME", home.path()},
                                                        {"XDG_DATA_HOME", home.at("data")},
                                                        {"XDG_DATA_DIRS", home.at("none")},
                                                        {"XDG_RUNTIME_DIR", home.path()},
                                                        {"XDG_SESSION_TYPE", "wayland"},
                                                        {"DBUS_SESSION_BUS_ADDRESS", session.address()}};
        for (auto& [name, value] : more) variables[name] = value;
        return makeLinuxHost(environmentOf(std::move(variables)), {});
    }
    void watch() {
        kept = host.frontmost->onActivation([this](std::string path) { told.push_back(std::move(path)); });
    }
    std::string inFront() const {
        const auto front = host.frontmost->current();
        return front ? front->appID.value_or("no identifier") : "nobody";
    }
};

}  // namespace

TEST_F(FrontmostChoiceTest, kwinTellsWhereTheDisplayServerDoesNot) {
    const FakeKWin kwin(session.address());
    watch();
    EXPECT_FALSE(host.frontmost->canTell()) << "not before it has said its first word";
    ASSERT_TRUE(runUntil([&] { return !kwin.listener.empty(); }));
    kwin.activate("1", "org.example.Editor", "");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Editor"; }));
    EXPECT_TRUE(host.frontmost->canTell());
    kwin.activate(std::to_string(::getpid()), "org.example.Editor", "");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Self"; })) << "the process goes before the name";
    kwin.activate("1", "", "ORG.Example.Editor");
    EXPECT_TRUE(runUntil([&] { return told.size() == 3; })) << "a class that is spelt otherwise";
    EXPECT_THAT(told, ElementsAre(editor, self, editor));
}

TEST_F(FrontmostChoiceTest, screenReadersNewsServeWhileThereIsNoKWin) {
    const PrivateBus events;
    const Registry registry(events);
    const Launcher launcher(session, events.address(), true);
    const Speaker speaker(events, "org.example.Speaker");
    watch();
    EXPECT_FALSE(host.frontmost->canTell());
    EXPECT_TRUE(runUntil([&] {
        speaker.say("Activate");
        return inFront() == "org.example.Self";
    }));
    EXPECT_FALSE(host.frontmost->canTell()) << "nobody's windows can be closed";
    EXPECT_THAT(told, ElementsAre(self));
    const FakeKWin kwin(session.address());
    ASSERT_TRUE(runUntil([&] { return !kwin.listener.empty(); }));
    kwin.activate("1", "org.example.Editor", "");
    EXPECT_TRUE(runUntil([&] { return inFront() == "org.example.Editor"; }));
    speaker.say("Activate");
    runFor(50ms);
    EXPECT_EQ(inFront(), "org.example.Editor");
}

TEST_F(FrontmostChoiceTest, kwinClosesTheWindowsOfARunningApplication) {
    const std::string program = home.at("sleeper");
    std::filesystem::copy_file("/bin/sleep", program);
    describe("org.example.Sleeper", program);
    pid_t pid = 0;
    const std::vector<const char*> words = {program.c_str(), "60", nullptr};
    ASSERT_EQ(::posix_spawn(&pid, program.c_str(), nullptr, nullptr, const_cast<char**>(words.data()), environ), 0);
    const FakeKWin kwin(session.address());
    watch();
    ASSERT_TRUE(runUntil([&] { return !kwin.listener.empty(); }));
    kwin.list("999999999\torg.example.sleeper\tself\n1\torg.example.Editor\teditor");
    kwin.activate("1", "org.example.Editor", "");
    EXPECT_TRUE(runUntil([&] { return host.frontmost->canTell(); }));
    const auto running = host.running->withAppID("org.example.Sleeper");
    EXPECT_THAT(running, ::testing::SizeIs(1));
    if (!running.empty()) running.front()->terminate();
    EXPECT_TRUE(runUntil([&] { return kwin.has(FakeKWin::closing); }));
    EXPECT_THAT(kwin.scripts.at(FakeKWin::closing),
                ::testing::HasSubstr("['999999999\\x09org.example.sleeper\\x09self']"));
    EXPECT_EQ(::kill(pid, 0), 0) << "one with windows is asked, not ended";
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
}

TEST_F(FrontmostChoiceTest, screenReadersNewsAreNotAskedForWhereKWinIs) {
    const PrivateBus events;
    const Registry registry(events);
    const Launcher launcher(session, events.address(), true);
    const FakeKWin kwin(session.address());
    watch();
    ASSERT_TRUE(runUntil([&] { return !kwin.listener.empty(); }));
    kwin.activate("1", "org.example.Editor", "");
    EXPECT_TRUE(runUntil([&] { return host.frontmost->canTell(); }));
    EXPECT_THAT(launcher.service.calls, IsEmpty());
    EXPECT_THAT(registry.calls, IsEmpty());
}

TEST_F(FrontmostChoiceTest, withNeitherNobodyCanTell) {
    watch();
    runFor(100ms);
    EXPECT_FALSE(host.frontmost->canTell());
    EXPECT_EQ(host.frontmost->current(), std::nullopt);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FrontmostChoiceTest, outsideOfWaylandNeitherIsAsked) {
    const FakeKWin kwin(session.address());
    const Host other = hostOf({{"XDG_SESSION_TYPE", "x11"}});
    const auto subscription = other.frontmost->onActivation([](const std::string&) {});
    runFor(100ms);
    EXPECT_FALSE(other.frontmost->canTell());
    EXPECT_FALSE(kwin.wasAsked());
}

}  // namespace tolvane::linuxhost
