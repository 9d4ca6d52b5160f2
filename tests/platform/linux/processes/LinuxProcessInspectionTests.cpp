#include "platform/linux/processes/LinuxProcessInspection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using namespace std::string_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::Le;
using testing::MockProc;
using testing::MockProcess;
using ::testing::Optional;
using testing::Sweeper;

namespace {

constexpr std::uint64_t kernelThread = 0x200000;
constexpr int wholeRound = 16;

/// Two groups with a process each, swept until they are settled.
}  // namespace

TEST(LinuxProcessInspection, giveTheFactsOfAProcess) {
    MockProc proc;
    proc.put({.pid = 12, .ppid = 7, .swapped = 50});
    const auto inspection = proc.inspection();
    EXPECT_THAT(inspection->allPids(), ElementsAre(12));
    const auto bsd = inspection->bsdRecord(12);
    ASSERT_TRUE(bsd);
    EXPECT_EQ(bsd->ppid, 7);
    EXPECT_EQ(bsd->uid, 1000u);
    EXPECT_EQ(bsd->name, "tool");
    EXPECT_EQ(bsd->startTime, dateFromUnixSeconds(1.7e9 + 10));
    EXPECT_NE(bsd->programStamp, 0u);
    const UsageRecord usage{.userTime = 5,
                            .systemTime = 2,
                            .performanceUserTime = 5,
                            .performanceSystemTime = 2,
                            .footprint = 450 * 1024,
                            .peakFootprint = 450 * 1024};
    EXPECT_EQ(inspection->usage(12), usage);
    EXPECT_EQ(inspection->executablePath(12), "/usr/bin/tool");
    EXPECT_EQ(inspection->memoryRecord(12), (MemoryRecord{.compressed = 50 * 1024, .swapIns = 0}));
    EXPECT_EQ(inspection->workingDirectory(12), "/home/ada");
    EXPECT_EQ(inspection->nanosPerTick(), 1e7);
}

TEST(LinuxProcessInspection, theListIsAscendingAndHoldsOnlyPids) {
    MockProc proc;
    for (const Pid pid : {300, 5, 41}) proc.put({.pid = pid});
    proc.write("12x/stat", "");
    proc.write("0/stat", "");
    proc.write("uptime", "");
    EXPECT_THAT(proc.inspection()->allPids(), ElementsAre(5, 41, 300));
}

TEST(LinuxProcessInspection, aTitleThatChangesIsReadAnew) {
    MockProc proc;
    const auto shown = [&](const std::string& title) {
        proc.put({.pid = 20, .comm = title, .executable = "/usr/bin/node", .arguments = title + std::string(8, '\0')});
    };
    shown("web");
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    EXPECT_EQ(sweeper.arguments[20], TextList{"web"});
    for (const std::string title : {"web serve", "web serve all"}) {
        shown(title);
        sweeper.sweep();
        EXPECT_EQ(sweeper.arguments[20], TextList{title});
    }
}

TEST(LinuxProcessInspection, aTitleDoesNotTakeThePlaceOfArgumentsThatWereSeen) {
    MockProc proc;
    MockProcess server{
        .pid = 20, .comm = "node", .executable = "/usr/bin/node", .arguments = std::string("node\0server.js\0", 15)};
    proc.put(server);
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    const auto seen = sweeper.arguments[20];
    server.comm = "my server";
    server.arguments = "my server" + std::string(8, '\0');
    proc.put(server);
    sweeper.sweep();
    EXPECT_EQ(sweeper.readings[20].bsd->name, "my server");
    EXPECT_EQ(sweeper.arguments[20], seen);
}

TEST(LinuxProcessInspection, aFolderThatCannotBeListedGivesNothing) {
    MockProc proc;
    auto options = proc.options();
    options.procFolder += "/nowhere";
    LinuxProcessInspection inspection(options);
    EXPECT_TRUE(inspection.allPids().empty());
    EXPECT_FALSE(inspection.bsdRecord(1));
    EXPECT_TRUE(inspection.listeningPorts(1).empty());
}

TEST(LinuxProcessInspection, noPidBelowOneIsAProcess) {
    MockProc proc;
    const auto inspection = proc.inspection();
    EXPECT_FALSE(inspection->bsdRecord(0));
    EXPECT_FALSE(inspection->usage(-1));
    EXPECT_FALSE(inspection->arguments(0));
    EXPECT_FALSE(inspection->environment(0));
}

TEST(LinuxProcessInspection, eachFileIsReadAtMostOnceInASweep) {
    MockProc proc;
    for (Pid pid = 10; pid < 30; ++pid) {
        proc.put({.pid = pid, .comm = pid % 2 ? "bash" : "fifteen-letters", .executable = "/usr/bin/bash"});
    }
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    for (int sweep = 0; sweep < 20; ++sweep) {
        proc.accesses.clear();
        sweeper.sweep();
        for (const auto& [path, times] : proc.accesses) EXPECT_EQ(times, 1) << path << " in sweep " << sweep;
    }
}

TEST(LinuxProcessInspection, aStillProcessCostsOneFileWithoutGroups) {
    MockProc proc;
    proc.put({.pid = 20});
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    int files = 0;
    for (int sweep = 0; sweep < 2 + wholeRound; ++sweep) {
        if (sweep == 2) proc.accesses.clear();
        sweeper.sweep();
    }
    files = proc.timesReadBelow(20);
    // In 16 sweeps: stat each time, the folder in four of them, status and group once.
    EXPECT_EQ(proc.timesRead("20/stat"), 16);
    EXPECT_EQ(proc.timesRead("20/cwd"), 4);
    EXPECT_EQ(proc.timesRead("20/status"), 1);
    EXPECT_EQ(proc.timesRead("20/cgroup"), 1);
    EXPECT_EQ(proc.timesRead("20/exe"), 0);
    EXPECT_EQ(files, 22);
}

TEST(LinuxProcessInspection, memoryAndFolderAreReadWhenTheProcessMoved) {
    MockProc proc;
    MockProcess process{.pid = 20};
    proc.put(process);
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    sweeper.sweep();
    process.minorFaults += 1;
    process.anonymous = 900;
    process.folder = "/srv";
    proc.put(process);
    sweeper.sweep();
    EXPECT_EQ(sweeper.readings[20].usage->footprint, 900u * 1024);
    EXPECT_EQ(sweeper.readings[20].folder, "/srv");
}

TEST(LinuxProcessInspection, thePeakIsTheHighestFootprintSeen) {
    MockProc proc;
    MockProcess process{.pid = 20};
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    for (const std::uint64_t size : {400u, 900u, 100u}) {
        process.anonymous = size;
        process.minorFaults += 1;
        proc.put(process);
        sweeper.sweep();
    }
    EXPECT_EQ(sweeper.readings[20].usage->footprint, 100u * 1024);
    EXPECT_EQ(sweeper.readings[20].usage->peakFootprint, 900u * 1024);
}

TEST(LinuxProcessInspection, anExecMovesStampPathNameAndArguments) {
    MockProc proc;
    MockProcess process{.pid = 20};
    proc.put(process);
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    const auto before = sweeper.readings[20];
    process.program = 2;
    process.comm = "other";
    process.executable = "/opt/other";
    process.arguments = "other\0--fast\0"s;
    proc.put(process);
    sweeper.sweep();
    const auto& after = sweeper.readings[20];
    EXPECT_NE(after.bsd->programStamp, before.bsd->programStamp);
    EXPECT_EQ(after.bsd->startTime, before.bsd->startTime);
    EXPECT_EQ(after.bsd->name, "other");
    EXPECT_EQ(after.executable, "/opt/other");
    EXPECT_EQ(sweeper.arguments[20], (TextList{"other", "--fast"}));
}

TEST(LinuxProcessInspection, aReusedPidIsAnotherProcess) {
    MockProc proc;
    proc.put({.pid = 20, .anonymous = 9000, .arguments = "old\0"s});
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    sweeper.sweep();
    proc.put({.pid = 20, .comm = "new", .startTicks = 5000, .executable = "/opt/new", .arguments = "new\0"s});
    sweeper.sweep();
    const auto& reading = sweeper.readings[20];
    EXPECT_EQ(reading.bsd->name, "new");
    EXPECT_EQ(reading.bsd->startTime, dateFromUnixSeconds(1.7e9 + 50));
    EXPECT_EQ(reading.executable, "/opt/new");
    EXPECT_EQ(reading.usage->peakFootprint, 400u * 1024);
    EXPECT_EQ(sweeper.arguments[20], TextList{"new"});
}

TEST(LinuxProcessInspection, aZombieIsListedButNoProcess) {
    MockProc proc;
    proc.put({.pid = 20, .state = 'Z'});
    proc.put({.pid = 21, .state = 'X'});
    const auto inspection = proc.inspection();
    EXPECT_THAT(inspection->allPids(), ElementsAre(20, 21));
    EXPECT_FALSE(inspection->bsdRecord(20));
    EXPECT_FALSE(inspection->usage(20));
    EXPECT_FALSE(inspection->bsdRecord(21));
}

TEST(LinuxProcessInspection, aProcessThatEndsMidReadIsLeftOut) {
    for (const char* leaf : {"stat", "status"}) {
        MockProc proc;
        proc.put({.pid = 20});
        const auto inspection = proc.inspection();
        inspection->allPids();
        proc.removeFile(20, leaf);
        EXPECT_FALSE(inspection->bsdRecord(20)) << leaf;
        EXPECT_FALSE(inspection->usage(20)) << leaf;
        EXPECT_FALSE(inspection->belongsToSystem(20)) << leaf;
    }
}

TEST(LinuxProcessInspection, truncatedFilesAreNoProcess) {
    MockProc proc;
    proc.put({.pid = 20});
    proc.put({.pid = 21});
    proc.write("20/stat", "20 (tool) S 1");
    proc.write("21/status", "Name:\ttool\n");
    const auto inspection = proc.inspection();
    inspection->allPids();
    EXPECT_FALSE(inspection->bsdRecord(20));
    EXPECT_FALSE(inspection->bsdRecord(21));
}

TEST(LinuxProcessInspection, whatTheKernelShieldsIsMissingAndTheRestIsThere) {
    MockProc proc;
    proc.put({.pid = 20, .uid = 7, .program = 0, .executable = "", .folder = ""});
    const auto inspection = proc.inspection();
    inspection->allPids();
    const auto bsd = inspection->bsdRecord(20);
    ASSERT_TRUE(bsd);
    EXPECT_EQ(bsd->uid, 7u);
    EXPECT_EQ(bsd->programStamp, 0u);
    EXPECT_EQ(bsd->name, "tool");
    EXPECT_FALSE(inspection->executablePath(20));
    EXPECT_FALSE(inspection->workingDirectory(20));
    EXPECT_EQ(inspection->belongsToSystem(20), true);
    EXPECT_EQ(inspection->arguments(20), TextList{"tool"});
    EXPECT_EQ(inspection->environment(20), std::vector<std::string>{});
}

TEST(LinuxProcessInspection, aReplacedProgramKeepsItsPath) {
    MockProc proc;
    proc.put({.pid = 20, .executable = "/usr/bin/tool (deleted)"});
    const auto inspection = proc.inspection();
    inspection->allPids();
    EXPECT_EQ(inspection->executablePath(20), "/usr/bin/tool");
}

TEST(LinuxProcessInspection, textsThatAreNotUtf8AreRepaired) {
    MockProc proc;
    proc.put({.pid = 20, .comm = "a\xff", .executable = "/opt/\xfe", .folder = "/tmp/\x80"});
    const auto inspection = proc.inspection();
    inspection->allPids();
    EXPECT_EQ(inspection->bsdRecord(20)->name, "a\xEF\xBF\xBD");
    EXPECT_EQ(inspection->executablePath(20), "/opt/\xEF\xBF\xBD");
    EXPECT_EQ(inspection->workingDirectory(20), "/tmp/\xEF\xBF\xBD");
}

TEST(LinuxProcessInspection, anUnchangedTextIsTheSharedOne) {
    MockProc proc;
    proc.put({.pid = 20});
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    const auto before = sweeper.readings[20];
    sweeper.sweep();
    EXPECT_EQ(sweeper.readings[20].folder->view().data(), before.folder->view().data());
    EXPECT_EQ(sweeper.readings[20].bsd->name.view().data(), before.bsd->name.view().data());
}

TEST(LinuxProcessInspection, aKernelThreadHasNoMemoryNoPathAndNoArguments) {
    MockProc proc;
    proc.put({.pid = 20,
              .ppid = 2,
              .comm = "kworker/u16:3-events_unbound",
              .uid = 0,
              .flags = kernelThread,
              .program = 0,
              .executable = "",
              .folder = "",
              .arguments = ""});
    const auto inspection = proc.inspection();
    inspection->allPids();
    EXPECT_EQ(inspection->bsdRecord(20)->name, "kworker/u16:3-events_unbound");
    EXPECT_EQ(inspection->bsdRecord(20)->ppid, 2);
    EXPECT_EQ(inspection->usage(20)->footprint, 0u);
    EXPECT_FALSE(inspection->arguments(20));
    EXPECT_FALSE(inspection->environment(20));
    EXPECT_EQ(inspection->belongsToSystem(20), true);
}

TEST(LinuxProcessInspection, aKernelThreadIsReadEachSweepOnlyWhileItWorks) {
    MockProc proc;
    MockProcess thread{.pid = 24, .ppid = 2, .uid = 0, .flags = kernelThread, .program = 0};
    proc.put(thread);
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    for (int sweep = 0; sweep < wholeRound; ++sweep) sweeper.sweep();
    proc.accesses.clear();
    for (int sweep = 0; sweep < wholeRound; ++sweep) sweeper.sweep();
    EXPECT_EQ(proc.timesReadBelow(24), 2);
    proc.accesses.clear();
    for (int sweep = 0; sweep < wholeRound; ++sweep) {
        thread.systemTicks += 3;
        proc.put(thread);
        sweeper.sweep();
    }
    EXPECT_THAT(proc.timesReadBelow(24), AllOf(Ge(9), Le(16)));
}

TEST(LinuxProcessInspection, askingAgainReadsAfreshAndInFull) {
    MockProc proc;
    MockProcess process{.pid = 20};
    proc.put(process);
    const auto inspection = proc.inspection();
    inspection->allPids();
    inspection->bsdRecord(20);
    process.anonymous = 1;
    process.executable = "/opt/changed";
    process.folder = "/elsewhere";
    process.uid = 3;
    proc.put(process);
    proc.accesses.clear();
    EXPECT_EQ(inspection->bsdRecord(20)->uid, 3u);
    EXPECT_EQ(inspection->usage(20)->footprint, 1024u);
    EXPECT_EQ(inspection->executablePath(20), "/opt/changed");
    EXPECT_EQ(inspection->workingDirectory(20), "/elsewhere");
    EXPECT_EQ(proc.timesRead("20/stat"), 1);
}

TEST(LinuxProcessInspection, aPidThatNoSweepListedIsReadInFullEachTime) {
    MockProc proc;
    MockProcess process{.pid = 20};
    proc.put(process);
    const auto inspection = proc.inspection();
    EXPECT_EQ(inspection->bsdRecord(20)->name, "tool");
    EXPECT_EQ(inspection->usage(20)->footprint, 400u * 1024);
    process.anonymous = 8;
    proc.put(process);
    EXPECT_TRUE(inspection->bsdRecord(20));
    EXPECT_EQ(inspection->usage(20)->footprint, 8u * 1024);
    proc.remove(20);
    EXPECT_FALSE(inspection->bsdRecord(20));
    EXPECT_FALSE(inspection->usage(20));
}

TEST(LinuxProcessInspection, argumentsAreAskedForWithoutTheEnvironment) {
    MockProc proc;
    proc.put({.pid = 20, .environment = "HOME=/home/ada\0"s});
    const auto inspection = proc.inspection();
    EXPECT_THAT(inspection->environment(20), Optional(ElementsAre("HOME=/home/ada")));
    inspection->allPids();
    inspection->bsdRecord(20);
    proc.accesses.clear();
    EXPECT_EQ(inspection->arguments(20), TextList{"tool"});
    EXPECT_EQ(proc.timesRead("20/environ"), 0);
    inspection->bsdRecord(20);
    EXPECT_EQ(inspection->arguments(20), TextList{"tool"});
    EXPECT_THAT(inspection->environment(20), Optional(ElementsAre("HOME=/home/ada")));
}

TEST(LinuxProcessInspection, aProcessAdoptedByTheUsersServiceManagerHasParentOne) {
    MockProc proc;
    const std::string manager = "/user.slice/user-1000.slice/user@1000.service/";
    proc.put({.pid = 9, .comm = "systemd", .group = manager + "init.scope", .executable = "/lib/systemd/systemd"});
    proc.put({.pid = 20, .ppid = 9, .group = manager + "app.slice/x.scope"});
    proc.put({.pid = 21, .ppid = 20, .group = manager + "app.slice/x.scope"});
    const auto inspection = proc.inspection();
    Sweeper sweeper(*inspection);
    sweeper.sweep();
    EXPECT_EQ(sweeper.readings[20].bsd->ppid, 1);
    EXPECT_EQ(sweeper.readings[21].bsd->ppid, 20);
    EXPECT_EQ(proc.inspection()->bsdRecord(20)->ppid, 1);
    EXPECT_EQ(proc.inspection()->bsdRecord(21)->ppid, 20);
}

}  // namespace tolvane::linuxhost
