#include "platform/linux/processes/LinuxServiceManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using testing::MockProc;
using ::testing::UnorderedElementsAre;

namespace {

const std::string user = "/user.slice/user-1000.slice/user@1000.service/";

}  // namespace

TEST(IsKeptService, servicesOfBothManagersAre) {
    EXPECT_TRUE(isKeptService("/system.slice/ssh.service"));
    EXPECT_TRUE(isKeptService("/system.slice/system-postgresql.slice/postgresql@15-main.service"));
    EXPECT_TRUE(isKeptService(user + "app.slice/syncthing.service"));
    EXPECT_TRUE(isKeptService(user + "syncthing.service/worker"));
    EXPECT_TRUE(isKeptService(user + "session.slice/org.gnome.Shell@x11.service"));
}

TEST(IsKeptService, applicationsScopesAndManagersAreNot) {
    EXPECT_FALSE(isKeptService(user + "app.slice/app-org.kde.dolphin@1a2b.service"));
    EXPECT_FALSE(isKeptService(user + "app.slice/app-org.gnome.Terminal.slice/gnome-terminal-server.service"));
    EXPECT_FALSE(isKeptService(user + "app.slice/app-gnome-firefox-4977.scope"));
    EXPECT_FALSE(isKeptService(user + "app.slice/run-u7.scope"));
    EXPECT_FALSE(isKeptService(user + "init.scope"));
    EXPECT_FALSE(isKeptService("/user.slice/user-1000.slice/session-2.scope"));
    EXPECT_FALSE(isKeptService("/system.slice/docker-0a1b.scope"));
    EXPECT_FALSE(isKeptService("/init.scope"));
    EXPECT_FALSE(isKeptService("/"));
    EXPECT_FALSE(isKeptService(""));
}

TEST(LinuxServiceManager, listsWhatItsServicesHold) {
    MockProc proc;
    proc.put({.pid = 10, .ppid = 1, .group = user + "app.slice/syncthing.service"});
    proc.put({.pid = 11, .ppid = 10, .group = user + "app.slice/syncthing.service"});
    proc.put({.pid = 12, .ppid = 1, .group = user + "app.slice/app-code-12.scope"});
    proc.put({.pid = 13, .ppid = 12, .group = user + "app.slice/app-code-12.scope"});
    EXPECT_THAT(LinuxServiceManager(proc.folder()).managedPIDs(), UnorderedElementsAre(10, 11));
}

TEST(LinuxServiceManager, leavesOutWhoStartsAUsersPrograms) {
    MockProc proc;
    // The desktop's shell, a terminal it started, and a server in that terminal; a helper of the shell beside them.
    proc.put({.pid = 20, .ppid = 1, .group = user + "session.slice/org.gnome.Shell@x11.service"});
    proc.put({.pid = 21, .ppid = 20, .group = user + "app.slice/app-gnome-kitty-21.scope"});
    proc.put({.pid = 22, .ppid = 21, .group = user + "app.slice/app-gnome-kitty-21.scope"});
    proc.put({.pid = 23, .ppid = 20, .group = user + "session.slice/org.gnome.Shell@x11.service"});
    // A remote login: its server is managed, what it serves is not.
    proc.put({.pid = 30, .ppid = 1, .group = "/system.slice/ssh.service"});
    proc.put({.pid = 31, .ppid = 30, .group = "/user.slice/user-1000.slice/session-2.scope"});
    EXPECT_THAT(LinuxServiceManager(proc.folder()).managedPIDs(), UnorderedElementsAre(23));
}

TEST(LinuxServiceManager, aRingOfParentsEnds) {
    MockProc proc;
    proc.put({.pid = 40, .ppid = 41, .group = "/system.slice/a.service"});
    proc.put({.pid = 41, .ppid = 40, .group = "/user.slice/session-2.scope"});
    EXPECT_THAT(LinuxServiceManager(proc.folder()).managedPIDs(), ::testing::IsEmpty());
}

TEST(LinuxServiceManager, withoutAProcessListThereIsNobody) {
    EXPECT_THAT(LinuxServiceManager("/nowhere").managedPIDs(), ::testing::IsEmpty());
}

}  // namespace tolvane::linuxhost
