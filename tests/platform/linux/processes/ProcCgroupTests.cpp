#include "platform/linux/processes/ProcCgroup.h"

#include <gtest/gtest.h>

#include "platform/linux/processes/CgroupGate.h"
#include "platform/linux/processes/MemoryMoves.h"
#include "tests/platform/linux/Fixtures.h"

namespace tolvane::linuxhost {

using testing::fixture;

namespace {

constexpr std::string_view userManager = "/user.slice/user-1000.slice/user@1000.service/";

UnitFacts below(std::string_view rest) { return unitFacts(std::string(userManager) + std::string(rest)); }

}  // namespace

TEST(ProcCgroup, readsTheUnifiedHierarchy) {
    const auto text = fixture("cgroup-application");
    const auto groups = parseProcCgroup(text);
    EXPECT_TRUE(groups.unified.ends_with("/app-gnome-org.example.Editor-4977.scope"));
    EXPECT_EQ(groups.unit(), groups.unified);
}

TEST(ProcCgroup, readsMixedHierarchies) {
    const auto text = fixture("cgroup-hybrid-root");
    EXPECT_EQ(parseProcCgroup(text).unified, "/");
    const auto mixed = parseProcCgroup("9:name=systemd:/user.slice/a.scope\n4:memory:/x\n0::/b\n");
    EXPECT_EQ(mixed.systemd, "/user.slice/a.scope");
    EXPECT_EQ(mixed.unified, "/b");
    EXPECT_EQ(mixed.unit(), "/user.slice/a.scope");
}

TEST(ProcCgroup, aPathMayHoldColons) { EXPECT_EQ(parseProcCgroup("0::/a:b:c\n").unified, "/a:b:c"); }

TEST(ProcCgroup, nonsenseGivesNothing) {
    for (const std::string_view text : {"", "\n\n", ":", "0", "0:", "0::", "1:cpu:/x"}) {
        EXPECT_EQ(parseProcCgroup(text).unified, "") << text;
    }
}

TEST(ProcCgroup, findsTheMountOfTheUnifiedHierarchy) {
    const auto mounts = fixture("mounts-hybrid");
    EXPECT_EQ(cgroupMount(mounts), "/sys/fs/cgroup/unified");
    EXPECT_EQ(cgroupMount("cgroup2 /sys/fs/cgroup cgroup2 rw 0 0\n"), "/sys/fs/cgroup");
    EXPECT_EQ(cgroupMount("tmpfs /cgroup2 tmpfs rw 0 0\ncgroup /sys/fs/cgroup/cpu cgroup rw,cgroup2 0 0\n"), "");
    EXPECT_EQ(cgroupMount(""), "");
}

TEST(UnitFacts, tellSystemSessionAndUserApart) {
    EXPECT_TRUE(unitFacts("/system.slice/ssh.service").system);
    EXPECT_TRUE(unitFacts("/init.scope").system);
    EXPECT_FALSE(unitFacts("/user.slice/user-1000.slice/session-2.scope").system);
    EXPECT_TRUE(below("session.slice/org.gnome.Shell@wayland.service").session);
    EXPECT_FALSE(below("app.slice/app-gnome-firefox-1.scope").session);
    EXPECT_FALSE(unitFacts("/").system);
    EXPECT_FALSE(unitFacts("").inUserManager);
}

TEST(UnitFacts, knowTheUserManagersOwnGroup) {
    EXPECT_TRUE(below("init.scope").userManager);
    EXPECT_TRUE(below("init.scope").system);
    EXPECT_FALSE(unitFacts("/init.scope").userManager);
}

TEST(UnitFacts, knowApplicationsManagedServicesAndScopes) {
    EXPECT_TRUE(below("app.slice/app-gnome-firefox-1.scope").application);
    EXPECT_TRUE(below("app.slice/app-org.gnome.Terminal.slice/vte-spawn-1.scope").application);
    EXPECT_TRUE(below("app.slice/snap.code.code-1.scope").application);
    EXPECT_FALSE(below("app.slice/app-org.gnome.Settings@1.service").managedService);
    EXPECT_TRUE(below("app.slice/gvfs-daemon.service").managedService);
    EXPECT_TRUE(below("run-u1.scope").userScope);
    EXPECT_FALSE(unitFacts("/user.slice/user-1000.slice/session-2.scope").userScope);
}

TEST(CgroupGate, readsTheUsageOfAGroup) {
    EXPECT_GT(parseUsage(fixture("cpu-stat")).value_or(0), 0u);
    EXPECT_EQ(parseUsage("usage_usec 211378335\nuser_usec 1\n"), 211378335u);
    EXPECT_FALSE(parseUsage(""));
    EXPECT_FALSE(parseUsage("user_usec 5\n"));
    EXPECT_FALSE(parseUsage("usage_usec \n"));
}

TEST(MemoryMoves, addsUpWhatMovesAnonymousMemory) {
    EXPECT_EQ(anonymousMoves("pswpin 1\npswpout 2\nzswpin 4\nzswpout 8\npglazyfreed 16\npgsteal_anon 32\n"), 63u);
    EXPECT_EQ(anonymousMoves("pgfault 999\npgsteal_kswapd 7\npgsteal_anon 1\npgsteal_file 6\n"), 1u);
    EXPECT_EQ(anonymousMoves(fixture("vmstat")), 0u);
}

TEST(MemoryMoves, countsAllThatWasTakenWhereTheKernelDoesNotTellApart) {
    EXPECT_EQ(anonymousMoves("pgsteal_kswapd 7\npgsteal_direct 3\npswpin 1\n"), 11u);
    EXPECT_EQ(anonymousMoves(""), 0u);
}

TEST(MemoryMoves, readsTheTimeThatProcessesWaited) {
    EXPECT_EQ(stallTotal("some avg10=0.00 avg60=0.00 avg300=0.00 total=1234\nfull avg10=0.00 total=99\n"), 1234u);
    EXPECT_EQ(stallTotal(fixture("pressure-memory")), 0u);
    EXPECT_EQ(stallTotal("full avg10=0.00 total=99\n"), 0u);
    EXPECT_EQ(stallTotal(""), 0u);
}

}  // namespace tolvane::linuxhost
