#include "platform/linux/applications/LinuxApplications.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::uint32_t terminalWindow = 34816;
const std::string appSlice = "/user.slice/user-1000.slice/user@1000.service/app.slice/";

/// A desktop with an editor, a browser, a terminal and a helper without a menu entry, and processes as files.
class LinuxApplicationsTest : public ::testing::Test {
protected:
    LinuxApplicationsTest() {
        describe("org.example.Editor", program("Editor/editor"), "Icon=editor\n");
        describe("browser", program("browser/browser"));
        describe("org.example.Terminal", program("usr/bin/example-terminal"), "Categories=System;TerminalEmulator;\n");
        describe("helper", program("usr/bin/helper"), "NoDisplay=true\n");
        describe("firefox_firefox", "/snap/bin/firefox");
        describe("dev.tolvane.Tolvane", program("usr/bin/tolvane"));
    }

    void describe(const std::string& identifier, const std::string& exec, const std::string& more = {}) const {
        folder.write("share/applications/" + identifier + ".desktop",
                     "[Desktop Entry]\nType=Application\nName=The " + identifier + "\nExec=" + exec + "\n" + more);
    }
    std::string program(const std::string& name) const {
        const std::string path = folder.write(name, "");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }
    std::string entry(const std::string& identifier) const {
        return folder.at("share/applications/" + identifier + ".desktop");
    }

    struct Process {
        Pid pid = 100;
        std::string unit = "session-2.scope";
        std::uint32_t terminal = 0;
        Pid session = 1;
        std::string commandLine = "x";
    };
    void run(const Process& process) const {
        const std::string place = "proc/" + std::to_string(process.pid) + "/";
        folder.write(place + "cgroup", "0::" + appSlice + process.unit + "\n");
        folder.write(place + "cmdline", process.commandLine + std::string(1, '\0'));
        folder.write(place + "stat", std::to_string(process.pid) + " (x) S 1 1 " + std::to_string(process.session) +
                                         " " + std::to_string(process.terminal) +
                                         " 1 0 0 0 0 0 0 0 0 0 20 0 1 0 5000 0 0 0 0 0 0 0 0 0\n");
    }
    /// The id of the application that a process belongs to.
    std::string owner(const Process& process, const std::string& executable) {
        run(process);
        const auto path = applications.appPath(process.pid, executable);
        return path ? applications.appID(*path).value_or("no identifier").str() : "nobody";
    }

    TemporaryFolder folder;
    double time = 1000;
    LinuxApplications applications{
        {.places = {.dataFolders = {folder.at("share")}, .programFolders = {folder.at("usr/bin")}, .locale = {}},
         .proc = folder.at("proc"),
         .uptime = [this] { return Seconds{time}; }}};
};

}  // namespace

TEST_F(LinuxApplicationsTest, anApplicationIsItsEntry) {
    const std::string path = entry("org.example.Editor");
    EXPECT_EQ(applications.appID(path).value_or(""), "org.example.Editor");
    EXPECT_EQ(applications.displayName(path), "The org.example.Editor");
    EXPECT_EQ(applications.iconName(path), "editor");
}

TEST_F(LinuxApplicationsTest, whatIsNoApplicationHasItsLastPathComponent) {
    EXPECT_EQ(applications.appID("/opt/x/thing"), std::nullopt);
    EXPECT_EQ(applications.displayName("/opt/x/thing"), "thing");
    EXPECT_EQ(applications.displayName("/opt/x/"), "x");
    EXPECT_EQ(applications.displayName("/"), "/");
    EXPECT_EQ(applications.displayName(""), "");
    EXPECT_EQ(applications.iconName("/opt/x/thing"), "");
}

TEST_F(LinuxApplicationsTest, whatRunsInAnApplicationsScopeBelongsToIt) {
    EXPECT_EQ(owner({.unit = "app-gnome-org.example.Editor-5.scope"}, "/usr/bin/git"), "org.example.Editor");
    EXPECT_EQ(owner({.unit = "app-helper@1.service"}, "/usr/bin/python3"), "helper");
    EXPECT_EQ(owner({.unit = "app-unknown-5.scope"}, "/usr/bin/git"), "nobody");
}

TEST_F(LinuxApplicationsTest, whatAPersonStartedInAnEditorsTerminalBelongsToNobody) {
    const Process inWindow{.unit = "app-org.example.Editor-5.scope", .terminal = terminalWindow};
    EXPECT_EQ(owner(inWindow, "/usr/bin/node"), "nobody");
    EXPECT_EQ(owner(inWindow, "/usr/bin/bash"), "nobody");
}

TEST_F(LinuxApplicationsTest, whatRunsBelowALoginShellBelongsToNobody) {
    run({.pid = 50, .commandLine = "-bash"});
    EXPECT_EQ(owner({.unit = "app-org.example.Editor-5.scope", .session = 50}, "/usr/bin/node"), "nobody");
}

TEST_F(LinuxApplicationsTest, whatRunsBelowAnApplicationsOwnScriptBelongsToIt) {
    run({.pid = 50, .commandLine = "/bin/bash"});
    EXPECT_EQ(owner({.unit = "app-org.example.Editor-5.scope", .session = 50}, "/usr/bin/node"), "org.example.Editor");
}

TEST_F(LinuxApplicationsTest, aTerminalsScopeHoldsTheTerminalOnly) {
    const Process inScope{.unit = "app-org.example.Terminal-5.scope"};
    EXPECT_EQ(owner(inScope, folder.at("usr/bin/example-terminal")), "org.example.Terminal");
    EXPECT_EQ(owner(inScope, "/usr/libexec/example-terminal-server"), "org.example.Terminal");
    EXPECT_EQ(owner(inScope, "/usr/bin/bash"), "nobody");
    EXPECT_EQ(owner(inScope, "/usr/bin/postgres"), "nobody");
    EXPECT_EQ(owner({.unit = "app-org.example.Terminal.slice/vte-spawn-1.scope"}, "/usr/bin/node"), "nobody");
}

TEST_F(LinuxApplicationsTest, anApplicationStartedInATerminalIsItself) {
    EXPECT_EQ(
        owner({.unit = "app-org.example.Terminal-5.scope", .terminal = terminalWindow}, folder.at("browser/browser")),
        "browser");
    EXPECT_EQ(
        owner({.unit = "app-org.example.Editor-5.scope", .terminal = terminalWindow}, folder.at("browser/renderer")),
        "browser");
}

TEST_F(LinuxApplicationsTest, withoutAScopeTheProgramTells) {
    EXPECT_EQ(owner({}, folder.at("Editor/editor")), "org.example.Editor");
    EXPECT_EQ(owner({}, folder.at("usr/bin/helper")), "nobody");
    EXPECT_EQ(owner({}, "/usr/bin/node"), "nobody");
    EXPECT_EQ(owner({}, ""), "nobody");
}

TEST_F(LinuxApplicationsTest, aSandboxTells) {
    folder.write("proc/100/root/.flatpak-info", "[Application]\nname=org.example.Editor\n");
    EXPECT_EQ(owner({}, "/app/bin/anything"), "org.example.Editor");
    EXPECT_EQ(owner({.pid = 101}, "/snap/firefox/5187/usr/lib/firefox/firefox"), "firefox_firefox");
    EXPECT_EQ(owner({.pid = 102, .unit = "snap.firefox.firefox-6d5b0c0e-0c51-4c35-a2a8-3d1d7b9d0f11.scope"}, ""),
              "firefox_firefox");
}

TEST_F(LinuxApplicationsTest, aProcessThatIsGoneBelongsToNobody) {
    EXPECT_EQ(applications.appPath(999, ""), std::nullopt);
    EXPECT_EQ(applications.appPath(-1, "/usr/bin/node"), std::nullopt);
}

TEST_F(LinuxApplicationsTest, newEntriesAreSeenWithinAMinute) {
    EXPECT_EQ(applications.appID(entry("late")), std::nullopt);
    std::filesystem::last_write_time(folder.at("share/applications"),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    time += 60;
    EXPECT_EQ(applications.appID(entry("late")), std::nullopt);
    describe("late", "late");
    time += 59;
    EXPECT_EQ(applications.appID(entry("late")), std::nullopt);
    time += 1;
    EXPECT_EQ(applications.appID(entry("late")).value_or(""), "late");
}

TEST_F(LinuxApplicationsTest, twoThreadsMayAskAtOnce) {
    run({});
    const auto ask = [this] {
        for (int round = 0; round < 200; ++round) applications.appPath(100, folder.at("Editor/editor"));
    };
    std::thread other(ask);
    ask();
    other.join();
    EXPECT_EQ(owner({}, folder.at("Editor/editor")), "org.example.Editor");
}

TEST(LinuxApplicationsSettings, addWhereSandboxesPutTheirEntries) {
    const auto environment = environmentOf({{"HOME", "/home/ada"}, {"PATH", "/a:/b::"}});
    const auto settings = LinuxApplications::settingsFor(LinuxFolders(environment), environment);
    EXPECT_THAT(settings.places.dataFolders,
                ::testing::ElementsAre("/home/ada/.local/share", "/usr/local/share", "/usr/share",
                                       "/home/ada/.local/share/flatpak/exports/share", "/var/lib/flatpak/exports/share",
                                       "/var/lib/snapd/desktop"));
    EXPECT_THAT(settings.places.programFolders, ::testing::ElementsAre("/a", "/b"));
}

TEST(LinuxApplicationsSettings, thisProgramIsNoApplication) {
    const auto environment = processEnvironment();
    LinuxApplications applications(LinuxApplications::settingsFor(LinuxFolders(environment), environment));
    EXPECT_EQ(applications.appPath(::getpid(), "/proc/self/exe"), std::nullopt);
}

TEST_F(LinuxApplicationsTest, whatThisProgramStartedForItsUserIsNotItsOwn) {
    const std::string unit = "app-gnome-dev.tolvane.Tolvane-77.scope";
    EXPECT_EQ(owner({.unit = unit}, folder.at("usr/bin/tolvane")), "dev.tolvane.Tolvane");
    EXPECT_EQ(owner({.unit = unit}, folder.at("usr/bin/node")), "nobody");
    EXPECT_EQ(owner({.unit = unit}, folder.at("Editor/editor")), "org.example.Editor");
}

}  // namespace tolvane::linuxhost
