#include "core/sampling/ProcessReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr Date start{Seconds{790'000'000}};

class ProcessReaderTest : public ::testing::Test {
protected:
    ProcessReader readerOf(bool hybrid) { return {*inspection, hybrid}; }
    std::vector<Pid> pidsRead() {
        std::vector<Pid> pids;
        for (const auto& sample : reader.readAll()) pids.push_back(sample.pid);
        return pids;
    }
    fakes::FakeProcess& addWithArgs(Pid pid, const std::vector<std::string>& args) {
        auto& process = world.add(pid, args.front());
        process.arguments = TextList(args);
        return process;
    }
    std::vector<std::string> argsOf(Pid pid) { return reader.read(pid)->args.strings(); }

    fakes::FakeHost host;
    fakes::FakeWorld& world = *host.world;
    std::unique_ptr<ProcessInspection> inspection = host.host.makeInspection();
    ProcessReader reader = readerOf(false);
};

TEST_F(ProcessReaderTest, takesEveryFact) {
    auto& process = addWithArgs(12, {"node", "server.js"});
    process.bsd = BSDRecord{.ppid = 7, .uid = 501, .name = "node", .startTime = start};
    process.path = Text("/opt/bin/node");
    process.usage = UsageRecord{.userTime = 100, .systemTime = 20, .footprint = 5000, .peakFootprint = 9000};
    process.memory = MemoryRecord{.compressed = 300, .swapIns = 40};
    process.cwd = Text("/home/ada/work");
    process.system = false;
    EXPECT_EQ(reader.read(12), (ProcSample{.pid = 12,
                                           .ppid = 7,
                                           .uid = 501,
                                           .name = "node",
                                           .path = "/opt/bin/node",
                                           .args = {"node", "server.js"},
                                           .cwd = Text("/home/ada/work"),
                                           .startTime = start,
                                           .footprint = 5000,
                                           .compressed = 300,
                                           .cpuTimeNanos = 120,
                                           .perfTimeNanos = 120,
                                           .peakFootprint = 9000,
                                           .swapIns = 40,
                                           .hostSaysSystem = false}));
}

TEST_F(ProcessReaderTest, keepsTheHostsOrder) {
    for (const Pid pid : {30, 10, 20}) world.add(pid, "x");
    EXPECT_THAT(pidsRead(), ElementsAre(30, 10, 20));
}

TEST_F(ProcessReaderTest, noListGivesNoSamples) { EXPECT_THAT(pidsRead(), IsEmpty()); }

TEST_F(ProcessReaderTest, pidsBelowOneAreNotAskedFor) {
    world.add(0, "kernel");
    world.add(-1, "none");
    EXPECT_EQ(reader.read(0), std::nullopt);
    EXPECT_THAT(pidsRead(), IsEmpty());
    EXPECT_THAT(world.asked, ElementsAre("allPids"));
}

TEST_F(ProcessReaderTest, processThatEndedMidSweepIsLeftOut) {
    world.add(10, "x");
    world.ghosts = {11};
    EXPECT_THAT(pidsRead(), ElementsAre(10));
}

TEST_F(ProcessReaderTest, processWithoutEitherMainRecordIsLeftOut) {
    world.add(10, "x").bsd.reset();
    world.add(11, "x").usage.reset();
    world.add(12, "x");
    EXPECT_THAT(pidsRead(), ElementsAre(12));
    EXPECT_EQ(reader.read(10), std::nullopt);
    EXPECT_EQ(reader.read(11), std::nullopt);
}

TEST_F(ProcessReaderTest, nothingMoreIsAskedOfAProcessThatIsLeftOut) {
    world.add(10, "x").bsd.reset();
    world.add(11, "x").usage.reset();
    reader.readAll();
    EXPECT_THAT(world.asked, ElementsAre("allPids", "bsdRecord 10", "bsdRecord 11", "usage 11"));
}

TEST_F(ProcessReaderTest, whatCannotBeReadStaysEmpty) {
    world.add(10, "shielded").path.reset();
    const auto sample = reader.read(10);
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->name, "shielded");
    EXPECT_EQ(sample->path, "");
    EXPECT_THAT(sample->args, IsEmpty());
    EXPECT_EQ(sample->cwd, std::nullopt);
    EXPECT_EQ(sample->compressed, 0U);
    EXPECT_EQ(sample->swapIns, 0U);
    EXPECT_EQ(sample->hostSaysSystem, std::nullopt);
}

TEST_F(ProcessReaderTest, oneUnreadableFactLeavesTheOthersAlone) {
    auto& process = addWithArgs(10, {"node", "a.js"});
    process.cwd = Text("/home/ada");
    process.memory = MemoryRecord{.compressed = 5, .swapIns = 6};
    auto whole = *reader.read(10);

    process.memory.reset();
    EXPECT_EQ(reader.read(10)->compressed, 0U);
    EXPECT_EQ(reader.read(10)->cwd, whole.cwd);
    process.cwd.reset();
    EXPECT_EQ(reader.read(10)->cwd, std::nullopt);
    EXPECT_EQ(reader.read(10)->path, whole.path);
    process.path.reset();
    EXPECT_EQ(reader.read(10)->path, "");
    EXPECT_EQ(reader.read(10)->args, whole.args);
}

TEST_F(ProcessReaderTest, emptyWorkingDirectoryIsNone) {
    world.add(10, "x").cwd = Text("");
    EXPECT_EQ(reader.read(10)->cwd, std::nullopt);
}

TEST_F(ProcessReaderTest, nameComesFromThePathWhereTheHostHasNone) {
    auto& process = world.add(10, "");
    process.path = Text("/opt/bin/tool");
    EXPECT_EQ(reader.read(10)->name, "tool");
}

TEST_F(ProcessReaderTest, noNameAndNoPathAreEmpty) {
    world.add(10, "").path.reset();
    EXPECT_EQ(reader.read(10)->name, "");
    EXPECT_EQ(reader.read(10)->path, "");
}

TEST_F(ProcessReaderTest, negativeSwapInsReadAsZero) {
    world.add(10, "x").memory = MemoryRecord{.compressed = 5, .swapIns = -1};
    EXPECT_EQ(reader.read(10)->swapIns, 0U);
    EXPECT_EQ(reader.read(10)->compressed, 5U);
}

TEST_F(ProcessReaderTest, ticksBecomeNanosecondsAndTheRestIsCut) {
    world.nanosPerTick = 125.0 / 3;
    world.add(10, "x").usage = UsageRecord{.userTime = 1, .systemTime = 1};
    // The sum is cut, not its parts: each alone would be cut to 41.
    EXPECT_EQ(readerOf(false).read(10)->cpuTimeNanos, 83U);
}

TEST_F(ProcessReaderTest, timesThatOverflowStayAtTheHighest) {
    world.nanosPerTick = 1000;
    world.add(10, "x").usage = UsageRecord{.userTime = std::numeric_limits<std::uint64_t>::max() / 2};
    EXPECT_EQ(readerOf(false).read(10)->cpuTimeNanos, std::numeric_limits<std::uint64_t>::max());
}

TEST_F(ProcessReaderTest, performanceTimeIsItsOwnWhereCoresDiffer) {
    world.nanosPerTick = 2.5;
    world.add(10, "x").usage =
        UsageRecord{.userTime = 10, .systemTime = 11, .performanceUserTime = 3, .performanceSystemTime = 4};
    EXPECT_EQ(readerOf(true).read(10)->cpuTimeNanos, 52U);
    EXPECT_EQ(readerOf(true).read(10)->perfTimeNanos, 17U);
}

TEST_F(ProcessReaderTest, performanceTimeIsAllTimeWhereCoresAreAlike) {
    world.add(10, "x").usage = UsageRecord{.userTime = 10, .systemTime = 11, .performanceUserTime = 3};
    EXPECT_EQ(readerOf(false).read(10)->perfTimeNanos, 21U);
}

TEST_F(ProcessReaderTest, argumentsAreReadOnceALife) {
    addWithArgs(10, {"node", "a.js"});
    reader.readAll();
    const auto again = reader.readAll();
    EXPECT_THAT(again.front().args.strings(), ElementsAre("node", "a.js"));
    EXPECT_EQ(world.timesAsked("arguments 10"), 1U);
    EXPECT_EQ(world.timesAsked("executablePath 10"), 2U);
    EXPECT_EQ(world.timesAsked("memoryRecord 10"), 2U);
    EXPECT_EQ(world.timesAsked("workingDirectory 10"), 2U);
}

TEST_F(ProcessReaderTest, unreadableArgumentsAreNotAskedForAgain) {
    auto& process = world.add(10, "x");
    reader.readAll();
    process.arguments = {"x", "late"};
    EXPECT_THAT(reader.readAll().front().args, IsEmpty());
    EXPECT_EQ(world.timesAsked("arguments 10"), 1U);
}

TEST_F(ProcessReaderTest, aReusedPidGetsItsOwnArguments) {
    auto& process = addWithArgs(10, {"node", "a.js"});
    reader.readAll();
    process.bsd->startTime = start + Seconds{1};
    process.arguments = {"python3", "b.py"};
    EXPECT_THAT(reader.readAll().front().args.strings(), ElementsAre("python3", "b.py"));
    EXPECT_THAT(reader.readAll().front().args.strings(), ElementsAre("python3", "b.py"));
    EXPECT_EQ(world.timesAsked("arguments 10"), 2U);
}

TEST_F(ProcessReaderTest, anotherProgramInTheSameProcessGetsItsOwnArguments) {
    auto& process = addWithArgs(10, {"zsh", "-c", "exec node a.js"});
    reader.readAll();
    process.bsd->programStamp = 99;
    process.arguments = {"node", "a.js"};
    EXPECT_THAT(argsOf(10), ElementsAre("node", "a.js"));
    EXPECT_THAT(argsOf(10), ElementsAre("node", "a.js"));
    EXPECT_EQ(world.timesAsked("arguments 10"), 2U);
}

TEST_F(ProcessReaderTest, argumentsOfAProcessThatASweepMissedAreForgotten) {
    addWithArgs(10, {"node", "a.js"});
    addWithArgs(11, {"node", "b.js"});
    reader.readAll();
    world.find(10)->usage.reset();
    reader.readAll();
    world.find(10)->usage = UsageRecord{};
    reader.readAll();
    EXPECT_EQ(world.timesAsked("arguments 10"), 2U);
    EXPECT_EQ(world.timesAsked("arguments 11"), 1U);
}

TEST_F(ProcessReaderTest, aFailedListForgetsAllArguments) {
    addWithArgs(10, {"node", "a.js"});
    reader.readAll();
    const auto processes = std::exchange(world.processes, {});
    reader.readAll();
    world.processes = processes;
    reader.readAll();
    EXPECT_EQ(world.timesAsked("arguments 10"), 2U);
}

TEST_F(ProcessReaderTest, aSingleReadSharesTheSweepsArguments) {
    addWithArgs(10, {"node", "a.js"});
    EXPECT_THAT(argsOf(10), ElementsAre("node", "a.js"));
    reader.readAll();
    EXPECT_THAT(argsOf(10), ElementsAre("node", "a.js"));
    EXPECT_EQ(world.timesAsked("arguments 10"), 1U);
}

TEST_F(ProcessReaderTest, anyOrderAndRepeatedPidsKeepEachProcessItsArguments) {
    for (const Pid pid : {30, 10, 20, 40, 5}) addWithArgs(pid, {"p", std::to_string(pid)});
    world.ghosts = {10, 30, 10};
    for (int sweep = 0; sweep < 3; ++sweep) {
        const auto samples = reader.readAll();
        ASSERT_EQ(samples.size(), 8U);
        for (const auto& sample : samples) EXPECT_EQ(sample.args[1], std::to_string(sample.pid));
        std::ranges::rotate(world.processes, world.processes.begin() + 1);
    }
    EXPECT_EQ(world.timesAsked("arguments 20"), 1U);
    EXPECT_EQ(world.timesAsked("arguments 5"), 1U);
}

TEST_F(ProcessReaderTest, argumentsAreSharedFromSweepToSweep) {
    addWithArgs(10, {"node", "a.js"});
    const auto first = reader.readAll();
    const auto second = reader.readAll();
    EXPECT_EQ(first[0].args[0].data(), second[0].args[0].data());
}

TEST_F(ProcessReaderTest, mainRecordIsTheFirstQuestionAboutAProcess) {
    world.add(10, "x");
    reader.readAll();
    EXPECT_THAT(world.asked, ElementsAre("allPids", "bsdRecord 10", "usage 10", "executablePath 10", "arguments 10",
                                         "memoryRecord 10", "workingDirectory 10", "belongsToSystem 10"));
}

TEST_F(ProcessReaderTest, environmentIsTheHostsAnswer) {
    world.add(10, "x").environment = {"HOME=/home/ada", "LANG=C"};
    EXPECT_THAT(ProcessReader::environment(*inspection, 10), ElementsAre("HOME=/home/ada", "LANG=C"));
}

TEST_F(ProcessReaderTest, unreadableEnvironmentIsEmpty) {
    world.add(10, "x");
    EXPECT_THAT(ProcessReader::environment(*inspection, 10), IsEmpty());
    EXPECT_THAT(ProcessReader::environment(*inspection, 11), IsEmpty());
}

TEST_F(ProcessReaderTest, portOfBothFamiliesIsListedOnce) {
    world.add(10, "x").ports = {8080, 443, 8080};
    EXPECT_THAT(ProcessReader::listeningPorts(*inspection, 10), ElementsAre(443, 8080));
}

TEST_F(ProcessReaderTest, portsOfSeveralProcessesStandUnderTheirPids) {
    world.add(10, "x").ports = {8080, 443, 8080};
    world.add(11, "y");
    const auto ports = ProcessReader::listeningPorts(*inspection, std::vector<Pid>{11, 10, 12});
    EXPECT_EQ(ports, (std::map<Pid, std::vector<int>>{{10, {443, 8080}}, {11, {}}, {12, {}}}));
}

TEST_F(ProcessReaderTest, portsKeepTheirLowSixteenBits) {
    world.add(10, "x").ports = {0x10050, 80, 65535, -1};
    EXPECT_THAT(ProcessReader::listeningPorts(*inspection, 10), ElementsAre(80, 65535));
}

TEST_F(ProcessReaderTest, processWithoutSocketsHasNoPorts) {
    world.add(10, "x");
    EXPECT_THAT(ProcessReader::listeningPorts(*inspection, 10), IsEmpty());
    EXPECT_THAT(ProcessReader::listeningPorts(*inspection, 11), IsEmpty());
}

}  // namespace
}  // namespace tolvane
