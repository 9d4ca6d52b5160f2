// The whole path from the kernel's records to samples.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "core/sampling/ProcessReader.h"
#include "platform/macos/kernel/MacProcessInspection.h"
#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacSweepTest : public ::testing::Test {
protected:
    /// The sweep takes the table when it is made: later changes go through `kernel_.processes`.
    ProcessReader& reader(bool hybrid = true) {
        inspection_ = std::make_unique<MacProcessInspection>(kernel_.table());
        reader_ = std::make_unique<ProcessReader>(*inspection_, hybrid);
        return *reader_;
    }

    FakeKernel kernel_;
    std::unique_ptr<MacProcessInspection> inspection_;
    std::unique_ptr<ProcessReader> reader_;
};

TEST_F(MacSweepTest, aSampleHoldsWhatTheRecordsSay) {
    auto& process = kernel_.add(42, "node", 7, 502);
    process.path = "/opt/bin/node";
    process.folder = "/home/ada/src";
    process.arguments = argumentsBlock("/opt/bin/node", {"node", "server.js"});
    process.usage.userTime = 3000;
    process.usage.systemTime = 600;
    process.usage.performanceUserTime = 300;
    process.usage.physicalFootprint = 1 << 20;
    process.usage.lifetimeMaximumFootprint = 1 << 21;
    process.memory.compressed = 4096;
    process.memory.ledgerSwapIns = 8192;
    const auto samples = reader().readAll();
    ASSERT_EQ(samples.size(), 1U);
    const auto& sample = samples[0];
    EXPECT_EQ(sample.name, "node");
    EXPECT_EQ(sample.path, "/opt/bin/node");
    EXPECT_EQ(sample.cwd, Text("/home/ada/src"));
    EXPECT_THAT(sample.args.strings(), ElementsAre("node", "server.js"));
    EXPECT_EQ(sample.cpuTimeNanos, 150'000U);
    EXPECT_EQ(sample.perfTimeNanos, 12'500U);
    EXPECT_EQ(sample.footprint, 1U << 20U);
    EXPECT_EQ(sample.peakFootprint, 1U << 21U);
    EXPECT_EQ(sample.compressed, 4096U);
    EXPECT_EQ(sample.swapIns, 8192U);
    EXPECT_EQ(sample.startTime, startedAt(1'700'000'042, 250'000));
}

TEST_F(MacSweepTest, withoutEfficiencyCoresAllTimeIsPerformanceTime) {
    auto& usage = kernel_.add(42, "node").usage;
    usage.userTime = 3001;
    usage.performanceUserTime = 7;
    const auto sample = reader(false).read(42);
    EXPECT_EQ(sample->perfTimeNanos, sample->cpuTimeNanos);
}

TEST_F(MacSweepTest, aNegativeSwapInReadsAsZero) {
    kernel_.add(42, "node").memory.ledgerSwapIns = -1;
    EXPECT_EQ(reader().read(42)->swapIns, 0U);
}

TEST_F(MacSweepTest, aProcessThatEndsAfterTheListingIsLeftOut) {
    kernel_.add(42, "node");
    kernel_.add(43, "zsh");
    kernel_.processes.erase(42);
    const auto samples = reader().readAll();
    ASSERT_EQ(samples.size(), 1U);
    EXPECT_EQ(samples[0].pid, 43);
}

TEST_F(MacSweepTest, aProcessThatEndsBetweenItsTwoRecordsIsLeftOut) {
    kernel_.add(42, "node");
    kernel_.calls.resourceUsage = [](Pid, int, void*) { return failing(ESRCH); };
    EXPECT_THAT(reader().readAll(), IsEmpty());
}

TEST_F(MacSweepTest, aShieldedProcessStaysWithWhatIsKnown) {
    kernel_.add(42, "loginwindow", 1, 0);
    kernel_.calls.systemValue = [](const int*, unsigned, void*, std::size_t*) { return failing(EPERM); };
    kernel_.calls.taskName = [](Port, Pid, Port*) { return 5; };
    const auto sample = reader().read(42);
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->name, "loginwindow");
    EXPECT_EQ(sample->path, "");
    EXPECT_THAT(sample->args.strings(), IsEmpty());
    EXPECT_FALSE(sample->cwd);
    EXPECT_EQ(sample->compressed, 0U);
}

TEST_F(MacSweepTest, aNamelessProcessIsCalledAfterItsPathOrNothing) {
    kernel_.add(42, "").path = "/opt/bin/node";
    kernel_.add(43, "");
    const auto samples = reader().readAll();
    EXPECT_EQ(samples[0].name, "node");
    EXPECT_EQ(samples[1].name, "");
    EXPECT_EQ(samples[1].path, "");
}

TEST_F(MacSweepTest, aReusedPidGetsItsOwnArguments) {
    kernel_.add(42, "node").arguments = argumentsBlock("/n", {"node", "old.js"});
    auto& reader = this->reader();
    reader.readAll();
    kernel_.processes[42].arguments = argumentsBlock("/n", {"node", "new.js"});
    EXPECT_THAT(reader.readAll()[0].args.strings(), ElementsAre("node", "old.js"));
    kernel_.processes[42].info.startMicroseconds += 1;
    EXPECT_THAT(reader.readAll()[0].args.strings(), ElementsAre("node", "new.js"));
}

TEST_F(MacSweepTest, aShellThatBecomesAnotherProgramGetsThatProgramsArguments) {
    auto& process = kernel_.add(42, "zsh");
    process.arguments = argumentsBlock("/bin/zsh", {"zsh"});
    auto& reader = this->reader();
    reader.readAll();
    process.info.name = {'n', 'o', 'd', 'e'};
    process.arguments = argumentsBlock("/opt/node", {"node", "a.js"});
    EXPECT_THAT(reader.readAll()[0].args.strings(), ElementsAre("node", "a.js"));
}

}  // namespace
}  // namespace tolvane::machost
