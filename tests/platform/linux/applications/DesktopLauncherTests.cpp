#include "platform/linux/applications/DesktopLauncher.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using testing::FakeService;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using testing::PrivateBus;
using ::testing::StartsWith;

constexpr const char* applicationInterface =
    "<node><interface name='org.freedesktop.Application'>"
    "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
    "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>"
    "</interface></node>";
constexpr const char* managerInterface =
    "<node><interface name='org.freedesktop.systemd1.Manager'><method name='StartTransientUnit'>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='a(sv)' direction='in'/>"
    "<arg type='a(sa(sv))' direction='in'/><arg type='o' direction='out'/></method></interface></node>";

class LauncherTest : public ::testing::Test {
protected:
    /// A program that writes down how it was started, then lives until it is ended.
    std::string program(const std::string& name, const std::string& then = "exec sleep 30") const {
        std::string path = folder.write(
            name, "#!/bin/sh\n{ echo \"pid $$\"; pwd; for word in \"$@\"; do echo \"word $word\"; done; env; } >" +
                      folder.at(name + ".part") + "\nmv " + folder.at(name + ".part") + " " + folder.at(name + ".out") +
                      "\n" + then + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }
    std::string entry(const std::string& identifier, const std::string& lines) const {
        return folder.write(identifier + ".desktop",
                            "[Desktop Entry]\nType=Application\nName=The Editor\nIcon=editor\n" + lines);
    }
    std::optional<std::string> launch(const std::string& path, const std::vector<std::string>& files = {}) {
        int told = 0;
        std::optional<std::string> result;
        launcher->launch(path, files, [&](std::optional<std::string> error) {
            ++told;
            result = std::move(error);
        });
        EXPECT_TRUE(runUntil([&] { return told > 0; }));
        EXPECT_EQ(told, 1);
        return result;
    }
    /// What the program has written down so far.
    std::string output(const std::string& name) const {
        EXPECT_TRUE(testing::eventually([&] { return folder.has(name + ".out"); }));
        return folder.read(name + ".out");
    }
    static pid_t pidIn(const std::string& output) { return std::atoi(output.c_str() + 4); }
    void useBus() {
        launcher = std::make_shared<Launcher>(std::make_shared<SessionBus>(bus.address()),
                                              std::vector<std::string>{"PATH=/usr/bin:/bin", "A=b"}, folder.path(),
                                              std::chrono::milliseconds(300));
    }

    TemporaryFolder folder;
    PrivateBus bus;
    std::shared_ptr<Launcher> launcher = std::make_shared<Launcher>(
        std::make_shared<SessionBus>(std::string()),
        std::vector<std::string>{"PATH=/usr/bin:/bin", "A=b", "DESKTOP_STARTUP_ID=x", "XDG_ACTIVATION_TOKEN=y"},
        folder.path());
};

}  // namespace

TEST_F(LauncherTest, aProgramIsStartedByItsEntry) {
    EXPECT_EQ(launch(entry("editor", "Exec=" + program("editor") + " --new %c %U\n")), std::nullopt);
    const std::string out = output("editor");
    ::kill(pidIn(out), SIGKILL);
    EXPECT_THAT(out, HasSubstr("word --new\nword The Editor\n"));
    EXPECT_THAT(out, HasSubstr("\n" + folder.path() + "\n"));
}

TEST_F(LauncherTest, itGetsTheGivenEnvironmentWithoutAWishToComeForward) {
    launch(entry("editor", "Exec=" + program("editor") + "\n"));
    const std::string out = output("editor");
    ::kill(pidIn(out), SIGKILL);
    EXPECT_THAT(out, HasSubstr("\nA=b\n"));
    EXPECT_THAT(out, Not(HasSubstr("DESKTOP_STARTUP_ID")));
    EXPECT_THAT(out, Not(HasSubstr("XDG_ACTIVATION_TOKEN")));
    EXPECT_THAT(out, Not(HasSubstr("XDG_RUNTIME_DIR")));
}

TEST_F(LauncherTest, itLivesInASessionOfItsOwnAndIsNotOurChild) {
    launch(entry("editor", "Exec=" + program("editor") + "\n"));
    const pid_t pid = pidIn(output("editor"));
    const std::string stat = testing::contentOf("/proc/" + std::to_string(pid) + "/stat");
    const std::string facts = stat.substr(stat.rfind(')'));
    ::kill(pid, SIGKILL);
    EXPECT_EQ(::getsid(pid), pid);
    EXPECT_THAT(facts, Not(HasSubstr(" S " + std::to_string(::getpid()) + " ")));
}

TEST_F(LauncherTest, itStartsInTheEntrysFolder) {
    std::filesystem::create_directories(folder.at("place"));
    launch(entry("editor", "Path=" + folder.at("place") + "\nExec=" + program("editor", "exit 0") + "\n"));
    EXPECT_THAT(output("editor"), HasSubstr("\n" + folder.at("place") + "\n"));
}

TEST_F(LauncherTest, filesComeAlong) {
    launch(entry("editor", "Exec=" + program("editor", "exit 0") + " %F\n"), {"/a b", "/c"});
    EXPECT_THAT(output("editor"), HasSubstr("word /a b\nword /c\n"));
}

TEST_F(LauncherTest, whatCannotBeStartedSaysWhy) {
    EXPECT_THAT(launch(folder.at("gone.desktop")), Optional(std::string("It is no longer installed.")));
    EXPECT_THAT(launch("/opt/thing"), Optional(std::string("It is no longer installed.")));
    EXPECT_THAT(launch(entry("a", "Exec=/nowhere/editor\n")), Optional(std::string("Its program is not installed.")));
    EXPECT_THAT(launch(entry("b", "TryExec=/nowhere\nExec=/bin/true\n")),
                Optional(std::string("Its program is not installed.")));
    EXPECT_NE(launch(entry("c", "Exec=/bin/true \"open\n")), std::nullopt);
    EXPECT_NE(launch(folder.write("d.desktop", "nonsense")), std::nullopt);
    EXPECT_NE(launch(folder.write("e.desktop", "")), std::nullopt);
    EXPECT_THAT(launch(entry("f", "Path=/nowhere/at/all\nExec=/bin/true\n")), Optional(HasSubstr("/nowhere/at/all")));
}

TEST_F(LauncherTest, anApplicationOnTheBusIsActivatedThere) {
    const FakeService editor(bus.address(), "org.example.my-Editor", "/org/example/my_Editor", applicationInterface,
                             [](const std::string&) { return g_variant_new("()"); });
    useBus();
    const std::string path = entry("org.example.my-Editor", "DBusActivatable=true\nExec=/bin/false\n");
    EXPECT_EQ(launch(path), std::nullopt);
    EXPECT_EQ(launch(path, {"/a b"}), std::nullopt);
    EXPECT_EQ(editor.argumentsOf("Activate"), std::vector<std::string>{"({},)"});
    EXPECT_EQ(editor.argumentsOf("Open"), std::vector<std::string>{"(['file:///a%20b'], {})"});
}

TEST_F(LauncherTest, withoutAnyoneOnTheBusTheCommandLineServes) {
    useBus();
    EXPECT_EQ(launch(entry("org.example.Editor", "DBusActivatable=true\nExec=" + program("editor", "exit 0") + "\n")),
              std::nullopt);
    EXPECT_THAT(output("editor"), StartsWith("pid "));
    EXPECT_THAT(launch(entry("org.example.Other", "DBusActivatable=true\n")), Optional(HasSubstr("org.example.Other")));
}

TEST_F(LauncherTest, anApplicationThatNeverAnswersIsAnError) {
    const FakeService editor(bus.address(), "org.example.Editor", "/org/example/Editor", applicationInterface,
                             [](const std::string&) { return nullptr; });
    useBus();
    EXPECT_THAT(launch(entry("org.example.Editor", "DBusActivatable=true\nExec=" + program("editor") + "\n")),
                Optional(std::string("It does not answer.")));
    EXPECT_FALSE(folder.has("editor.out"));
}

TEST_F(LauncherTest, underAServiceManagerItGetsAScope) {
    const FakeService manager(bus.address(), "org.freedesktop.systemd1", "/org/freedesktop/systemd1", managerInterface,
                              [](const std::string&) { return g_variant_new("(o)", "/job/1"); });
    useBus();
    launch(entry("org.example.my-editor", "Exec=" + program("editor", "exit 0") + "\n"));
    const pid_t pid = pidIn(output("editor"));
    ASSERT_TRUE(runUntil([&] { return !manager.calls.empty(); }));
    EXPECT_THAT(manager.calls.front().arguments,
                StartsWith("('app-org.example.my\\\\x2deditor-" + std::to_string(pid) +
                           ".scope', 'fail', [('PIDs', <[uint32 " + std::to_string(pid) + "]>)"));
}

}  // namespace tolvane::linuxhost
