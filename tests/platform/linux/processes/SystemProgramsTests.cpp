#include "platform/linux/processes/SystemPrograms.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using namespace std::string_literals;
using testing::MockProc;
using testing::MockProcess;
using testing::Sweeper;

namespace {

const std::string userSlice = "/user.slice/user-1000.slice/";
const std::string userManager = userSlice + "user@1000.service/";

std::optional<bool> verdict(const std::string& executable, const std::string& unit) {
    return belongsToSystem({.pid = 20, .unit = unitFacts(unit), .executable = executable});
}

/// The verdicts on a made-up tree of processes.
class SystemPrograms : public ::testing::Test {
protected:
    std::optional<bool> verdictOn(Pid pid) {
        const auto inspection = proc_.inspection();
        Sweeper sweeper(*inspection);
        sweeper.sweep();
        // A single question without a sweep gives the same answer.
        const auto once = proc_.inspection();
        once->bsdRecord(pid);
        EXPECT_EQ(once->belongsToSystem(pid), sweeper.readings[pid].system);
        return sweeper.readings[pid].system;
    }

    MockProc proc_;
};

}  // namespace

TEST_F(SystemPrograms, thePathDecidesWhereNothingElseTells) {
    EXPECT_EQ(verdict("/usr/bin/node", "/"), std::nullopt);
    EXPECT_EQ(verdict("/opt/tool", userSlice + "session-2.scope"), std::nullopt);
}

TEST_F(SystemPrograms, unitsOfTheSystemAndTheSessionAreTheSystems) {
    EXPECT_EQ(verdict("/opt/x", "/system.slice/x.service"), true);
    EXPECT_EQ(verdict("/lib/systemd/systemd", "/init.scope"), true);
    EXPECT_EQ(verdict("/lib/systemd/systemd", userManager + "init.scope"), true);
    EXPECT_EQ(verdict("/usr/bin/gnome-shell", userManager + "session.slice/org.gnome.Shell@wayland.service"), true);
}

TEST_F(SystemPrograms, installedManagedServicesAreTheSystemsAndOthersAreNot) {
    EXPECT_EQ(verdict("/usr/libexec/gvfsd", userManager + "app.slice/gvfs-daemon.service"), true);
    EXPECT_EQ(verdict("/home/ada/bin/sync", userManager + "app.slice/sync.service"), std::nullopt);
}

TEST_F(SystemPrograms, applicationsAndTheUsersScopesAreNotTheSystems) {
    EXPECT_EQ(verdict("/usr/lib/firefox/firefox", userManager + "app.slice/app-gnome-firefox-1.scope"), false);
    EXPECT_EQ(verdict("/usr/bin/gedit", userManager + "app.slice/app-org.gnome.gedit@1.service"), false);
    EXPECT_EQ(verdict("/usr/bin/node", userManager + "app.slice/app-org.gnome.Terminal.slice/vte-spawn-1.scope"),
              false);
    EXPECT_EQ(verdict("/usr/bin/node", userManager + "tmux-spawn-1.scope"), false);
}

TEST_F(SystemPrograms, withoutSessionUnitsTheDesktopsPartsAreKnownByName) {
    for (const char* name : {"Xorg", "openbox", "dbus-daemon", "pipewire", "ibus-daemon", "xfce4-panel", "xfwm4"}) {
        EXPECT_EQ(verdict("/usr/bin/"s + name, userSlice + "session-2.scope"), true) << name;
        EXPECT_EQ(verdict("/home/ada/build/"s + name, userSlice + "session-2.scope"), std::nullopt) << name;
        EXPECT_EQ(verdict("/usr/bin/"s + name, userManager + "app.slice/app-x.scope"), false) << name;
    }
}

TEST_F(SystemPrograms, launchersAndShellsAreKnownByName) {
    for (const char* name : {"xterm", "code", "tmux", "vim", "gnome-terminal-server", "konsole"}) {
        EXPECT_TRUE(isLauncher(name)) << name;
    }
    for (const char* name : {"node", "", "systemd", "bash"}) EXPECT_FALSE(isLauncher(name)) << name;
    EXPECT_TRUE(isShell("bash"));
    EXPECT_FALSE(isShell("python3"));
}

TEST_F(SystemPrograms, anotherUsersAndTheKernelsAreTheSystems) {
    proc_.put({.pid = 20, .uid = 33});
    proc_.put({.pid = 21, .ppid = 2, .uid = 1000, .flags = 0x200000});
    proc_.put({.pid = 1, .ppid = 0, .executable = "/opt/init"});
    EXPECT_EQ(verdictOn(20), true);
    EXPECT_EQ(verdictOn(21), true);
    EXPECT_EQ(verdictOn(1), true);
}

TEST_F(SystemPrograms, whatRunsBelowATerminalIsNotTheSystems) {
    proc_.put({.pid = 10, .comm = "xterm", .executable = "/usr/bin/xterm"});
    proc_.put({.pid = 11, .ppid = 10, .comm = "bash", .executable = "/usr/bin/bash", .arguments = "bash\0"s});
    proc_.put({.pid = 12, .ppid = 11, .comm = "node", .executable = "/usr/bin/node"});
    EXPECT_EQ(verdictOn(12), false);
    EXPECT_EQ(verdictOn(11), false);
    EXPECT_EQ(verdictOn(10), std::nullopt);
}

TEST_F(SystemPrograms, whatRunsBelowAnEditorWithAHigherPidIsNotTheSystems) {
    proc_.put({.pid = 90, .comm = "code", .executable = "/usr/share/code/code"});
    proc_.put({.pid = 12, .ppid = 90, .comm = "node", .executable = "/usr/bin/node"});
    EXPECT_EQ(verdictOn(12), false);
}

TEST_F(SystemPrograms, whatRunsBelowALoginShellIsNotTheSystems) {
    proc_.put({.pid = 11, .comm = "zsh", .executable = "/usr/bin/zsh", .arguments = "-zsh\0"s});
    proc_.put({.pid = 12, .ppid = 11, .executable = "/usr/bin/node"});
    proc_.put({.pid = 13, .comm = "sh", .executable = "/usr/bin/dash", .arguments = "sh\0-c\0x\0"s});
    proc_.put({.pid = 14, .ppid = 13, .executable = "/usr/bin/node"});
    EXPECT_EQ(verdictOn(12), false);
    EXPECT_EQ(verdictOn(14), std::nullopt);
}

TEST_F(SystemPrograms, whatHoldsAPseudoTerminalIsNotTheSystems) {
    proc_.put({.pid = 12, .terminal = 136 << 8 | 3, .executable = "/usr/bin/node"});
    proc_.put({.pid = 13, .terminal = 4 << 8 | 1, .executable = "/usr/bin/node"});
    EXPECT_EQ(verdictOn(12), false);
    EXPECT_EQ(verdictOn(13), std::nullopt);
}

TEST_F(SystemPrograms, whatRunsInsideAProjectIsNotTheSystems) {
    std::filesystem::create_directories(proc_.home() + "/shop/.git");
    std::filesystem::create_directories(proc_.home() + "/shop/web/src");
    std::filesystem::create_directories(proc_.home() + "/plain");
    proc_.put({.pid = 12, .executable = "/usr/bin/node", .folder = proc_.home() + "/shop/web/src"});
    proc_.put({.pid = 13, .executable = "/usr/bin/node", .folder = proc_.home() + "/plain"});
    EXPECT_EQ(verdictOn(12), false);
    EXPECT_EQ(verdictOn(13), std::nullopt);
}

TEST_F(SystemPrograms, theHomeFolderItselfIsNoProject) {
    const std::string home = proc_.home();
    std::filesystem::create_directories(home + "/.git");
    std::filesystem::create_directories(home + "/plain");
    EXPECT_FALSE(isInsideProject(home, home));
    EXPECT_FALSE(isInsideProject(home + "/plain", home));
    EXPECT_FALSE(isInsideProject(home + "beside", home));
    EXPECT_FALSE(isInsideProject("/plain", ""));
    EXPECT_FALSE(isInsideProject("", home));
}

TEST_F(SystemPrograms, whoWasStartedFromATerminalStaysTheUsersAsAnOrphan) {
    MockProcess node{.pid = 12, .ppid = 10, .executable = "/usr/bin/node"};
    proc_.put({.pid = 10, .comm = "xterm", .executable = "/usr/bin/xterm"});
    proc_.put(node);
    const auto inspection = proc_.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    EXPECT_EQ(sweeper.readings[12].system, false);
    proc_.remove(10);
    node.ppid = 1;
    proc_.put(node);
    sweeper.sweep();
    EXPECT_EQ(sweeper.readings[12].bsd->ppid, 1);
    EXPECT_EQ(sweeper.readings[12].system, false);
}

TEST_F(SystemPrograms, aContainersProcessIsTheSystemsAndHasNoFolder) {
    proc_.put({.pid = 10, .comm = "shim", .executable = "/usr/bin/shim"});
    proc_.put(
        {.pid = 12, .ppid = 10, .inOtherPidNamespace = true, .group = "/docker/1", .executable = "/usr/bin/node"});
    EXPECT_EQ(verdictOn(12), true);
    const auto inspection = proc_.inspection();
    inspection->bsdRecord(12);
    EXPECT_FALSE(inspection->workingDirectory(12));
}

TEST_F(SystemPrograms, aBrowsersOwnSandboxIsNoContainer) {
    proc_.put({.pid = 10, .executable = "/opt/browser/browser"});
    proc_.put({.pid = 11, .ppid = 10, .inOtherPidNamespace = true, .executable = "/opt/browser/browser"});
    proc_.put({.pid = 12, .ppid = 11, .inOtherPidNamespace = true, .executable = "/opt/browser/browser"});
    const std::string application = userManager + "app.slice/app-flatpak-org.example.Editor-9.scope";
    proc_.put({.pid = 13, .ppid = 1, .inOtherPidNamespace = true, .group = application, .executable = "/app/editor"});
    EXPECT_EQ(verdictOn(12), std::nullopt);
    EXPECT_EQ(verdictOn(13), false);
}

TEST_F(SystemPrograms, aRingOfParentsEnds) {
    proc_.put({.pid = 10, .ppid = 11});
    proc_.put({.pid = 11, .ppid = 10});
    EXPECT_EQ(verdictOn(10), std::nullopt);
}

}  // namespace tolvane::linuxhost
