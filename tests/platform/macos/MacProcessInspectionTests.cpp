#include "platform/macos/kernel/MacProcessInspection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "platform/macos/kernel/ProcessFacts.h"
#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;

class MacProcessInspectionTest : public ::testing::Test {
protected:
    MacProcessInspection inspection() { return MacProcessInspection(kernel_.table()); }

    FakeKernel kernel_;
};

TEST_F(MacProcessInspectionTest, aTickIsTheQuotientOfTheTimebase) {
    EXPECT_DOUBLE_EQ(inspection().nanosPerTick(), 125.0 / 3.0);
}

TEST_F(MacProcessInspectionTest, aTimebaseWithoutDenominatorCountsNanoseconds) {
    kernel_.calls.timebase = [] { return Timebase{.numerator = 125, .denominator = 0}; };
    EXPECT_DOUBLE_EQ(inspection().nanosPerTick(), 1);
}

TEST_F(MacProcessInspectionTest, pidsComeInTheKernelsOrder) {
    kernel_.pids = {88, 1, 500};
    EXPECT_THAT(inspection().allPids(), ElementsAre(88, 1, 500));
}

TEST_F(MacProcessInspectionTest, thereIsRoomFor64ThatStartBetweenTheTwoCalls) {
    int room = 0;
    kernel_.calls.listAllPids = [&](void* buffer, int size) {
        if (buffer == nullptr) return 3;
        room = size;
        return 0;
    };
    inspection().allPids();
    EXPECT_EQ(room, (3 + 64) * 4);
}

TEST_F(MacProcessInspectionTest, aListThatGrewPastTheRoomIsCutThere) {
    kernel_.calls.listAllPids = [](void* buffer, int size) {
        if (buffer == nullptr) return 1;
        std::memset(buffer, 0x01, static_cast<std::size_t>(size));
        return 5000;
    };
    EXPECT_THAT(inspection().allPids(), SizeIs(65));
}

TEST_F(MacProcessInspectionTest, noCountAndNoListMeanNoProcesses) {
    for (const int count : {0, -1}) {
        kernel_.calls.listAllPids = [count](void*, int) { return count; };
        EXPECT_THAT(inspection().allPids(), IsEmpty());
        kernel_.calls.listAllPids = [count](void* buffer, int) { return buffer == nullptr ? 5 : count; };
        EXPECT_THAT(inspection().allPids(), IsEmpty());
    }
}

TEST_F(MacProcessInspectionTest, readsTheBSDRecord) {
    kernel_.add(42, "node", 7, 502);
    const auto record = inspection().bsdRecord(42);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->ppid, 7);
    EXPECT_EQ(record->uid, 502U);
    EXPECT_EQ(record->name, "node");
    EXPECT_EQ(record->startTime, startedAt(1'700'000'042, 250'000));
}

TEST_F(MacProcessInspectionTest, asksForTheBSDRecordInTheKernelsWords) {
    std::array<int, 3> asked{};
    kernel_.calls.pidInfo = [&](Pid pid, int flavour, std::uint64_t argument, void*, int size) {
        asked = {pid, flavour, size};
        EXPECT_EQ(argument, 0U);
        return 0;
    };
    inspection().bsdRecord(42);
    EXPECT_THAT(asked, ElementsAre(42, 3, 136));
}

TEST_F(MacProcessInspectionTest, aBSDRecordOfAnotherLengthDropsTheProcess) {
    for (const int length : {-1, 0, 135, 137}) {
        kernel_.calls.pidInfo = [length](Pid, int, std::uint64_t, void*, int) { return length; };
        EXPECT_FALSE(inspection().bsdRecord(42)) << length;
    }
}

TEST_F(MacProcessInspectionTest, aNameOfFullLengthEndsThere) {
    kernel_.add(42, std::string(40, 'n'));
    EXPECT_EQ(inspection().bsdRecord(42)->name, std::string(32, 'n'));
}

TEST_F(MacProcessInspectionTest, aNameCutInTheMiddleOfACharacterIsRepaired) {
    kernel_.add(42, "caf\xC3");
    EXPECT_EQ(inspection().bsdRecord(42)->name, "caf\xEF\xBF\xBD");
}

TEST_F(MacProcessInspectionTest, theStampMovesWithTheProgramAndNotWithTime) {
    kernel_.add(42, "zsh");
    auto inspection = this->inspection();
    const auto shell = inspection.bsdRecord(42)->programStamp;
    kernel_.processes[42].info.ppid = 1;
    EXPECT_EQ(inspection.bsdRecord(42)->programStamp, shell);
    std::strcpy(kernel_.processes[42].info.name.data(), "node");
    EXPECT_NE(inspection.bsdRecord(42)->programStamp, shell);
}

TEST_F(MacProcessInspectionTest, readsWhatAProcessUsed) {
    auto& usage = kernel_.add(42, "node").usage;
    usage.userTime = 1;
    usage.systemTime = 2;
    usage.performanceUserTime = 3;
    usage.performanceSystemTime = 4;
    usage.physicalFootprint = 5;
    usage.lifetimeMaximumFootprint = 6;
    EXPECT_THAT(inspection().usage(42), Optional(UsageRecord{.userTime = 1,
                                                             .systemTime = 2,
                                                             .performanceUserTime = 3,
                                                             .performanceSystemTime = 4,
                                                             .footprint = 5,
                                                             .peakFootprint = 6}));
}

TEST_F(MacProcessInspectionTest, anyResultButZeroGivesNoUsage) {
    for (const int result : {-1, 1, 464}) {
        kernel_.calls.resourceUsage = [result](Pid, int flavour, void*) {
            EXPECT_EQ(flavour, 6);
            return result;
        };
        EXPECT_FALSE(inspection().usage(42)) << result;
    }
}

TEST_F(MacProcessInspectionTest, readsThePathUpToItsEnd) {
    kernel_.add(42, "node").path = std::string("/opt/bin/node\0rest", 18);
    EXPECT_THAT(inspection().executablePath(42), Optional(Text("/opt/bin/node")));
}

TEST_F(MacProcessInspectionTest, aPathMayFillItsBuffer) {
    kernel_.calls.pidPath = [](Pid, void* buffer, std::uint32_t size) {
        EXPECT_EQ(size, 4096U);
        std::memset(buffer, 'a', size);
        return static_cast<int>(size);
    };
    EXPECT_EQ(inspection().executablePath(42)->size(), 4096U);
}

TEST_F(MacProcessInspectionTest, noPathWithoutAResult) {
    for (const int result : {0, -1}) {
        kernel_.calls.pidPath = [result](Pid, void*, std::uint32_t) { return result; };
        EXPECT_FALSE(inspection().executablePath(42)) << result;
    }
}

TEST_F(MacProcessInspectionTest, readsTheArgumentsBlockByteForByte) {
    const auto block = argumentsBlock("/opt/node", {"node", "a.js"}, {"HOME=/home/ada"});
    kernel_.add(42, "node").arguments = block;
    EXPECT_THAT(readArgumentsBlock(kernel_.calls, 42), Optional(block));
}

TEST_F(MacProcessInspectionTest, argumentsAndEnvironmentAreTheBlocksTwoParts) {
    kernel_.add(42, "node").arguments = argumentsBlock("/opt/node", {"node", "a.js"}, {"HOME=/home/ada"});
    EXPECT_EQ(inspection().arguments(42), (TextList{"node", "a.js"}));
    EXPECT_THAT(inspection().environment(42), Optional(ElementsAre("HOME=/home/ada")));
}

TEST_F(MacProcessInspectionTest, aBlockIsAsLongAsTheSecondCallSaid) {
    kernel_.calls.systemValue = [](const int*, unsigned, void* value, std::size_t* size) {
        if (value != nullptr) std::memcpy(value, "abc", 3);
        *size = value == nullptr ? 100 : 3;
        return 0;
    };
    EXPECT_THAT(readArgumentsBlock(kernel_.calls, 42), Optional(std::string("abc")));
}

TEST_F(MacProcessInspectionTest, aBlockThatGrewBetweenTheCallsStaysWithinItsBuffer) {
    kernel_.calls.systemValue = [](const int*, unsigned, void* value, std::size_t* size) {
        *size = value == nullptr ? 10 : 4000;
        return 0;
    };
    EXPECT_THAT(readArgumentsBlock(kernel_.calls, 42), Optional(SizeIs(10)));
}

TEST_F(MacProcessInspectionTest, noBlockWhenEitherCallFailsOrGivesNothing) {
    for (const bool first : {true, false}) {
        for (const int result : {-1, 0}) {
            kernel_.calls.systemValue = [=](const int*, unsigned, void* value, std::size_t* size) {
                const bool fails = (value == nullptr) == first;
                *size = fails && result == 0 ? 0 : 10;
                return fails && result != 0 ? failing(ENOMEM) : 0;
            };
            EXPECT_FALSE(readArgumentsBlock(kernel_.calls, 42)) << first << result;
            EXPECT_FALSE(inspection().arguments(42)) << first << result;
            EXPECT_FALSE(inspection().environment(42)) << first << result;
        }
    }
}

TEST_F(MacProcessInspectionTest, readsTheMemoryRecordAndGivesThePortBack) {
    auto& memory = kernel_.add(42, "node").memory;
    memory.compressed = 700;
    memory.ledgerSwapIns = -3;
    EXPECT_THAT(inspection().memoryRecord(42), Optional(MemoryRecord{.compressed = 700, .swapIns = -3}));
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacProcessInspectionTest, asksForTheMemoryRecordInTheKernelsWords) {
    kernel_.add(42, "node");
    kernel_.calls.taskInfo = [](Port, int flavour, void* record, std::uint32_t* count) {
        EXPECT_EQ(flavour, 22);
        EXPECT_EQ(*count, 93U);
        EXPECT_THAT(std::string(static_cast<const char*>(record), 372), ::testing::Each('\0'));
        return 0;
    };
    EXPECT_THAT(inspection().memoryRecord(42), Optional(MemoryRecord{}));
}

TEST_F(MacProcessInspectionTest, aMemoryRecordThatFailsGivesThePortBackToo) {
    kernel_.add(42, "node");
    kernel_.calls.taskInfo = [](Port, int, void*, std::uint32_t*) { return 4; };
    EXPECT_FALSE(inspection().memoryRecord(42));
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacProcessInspectionTest, noMemoryRecordWithoutANamePort) {
    EXPECT_FALSE(inspection().memoryRecord(42));
    kernel_.calls.taskName = [](Port, Pid, Port* task) {
        *task = 0;
        return 0;
    };
    EXPECT_FALSE(inspection().memoryRecord(42));
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacProcessInspectionTest, aPortThatCameWithAFailureIsGivenBack) {
    kernel_.calls.taskName = [this](Port, Pid, Port* task) {
        *task = 77;
        ++kernel_.portsOut;
        return 5;
    };
    EXPECT_FALSE(inspection().memoryRecord(42));
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacProcessInspectionTest, readsTheWorkingFolder) {
    kernel_.add(42, "node").folder = "/home/ada/src";
    EXPECT_THAT(inspection().workingDirectory(42), Optional(Text("/home/ada/src")));
}

TEST_F(MacProcessInspectionTest, aFolderWithoutEndIsCutAt1024Bytes) {
    kernel_.add(42, "node").folder = std::string(3000, 'f');
    EXPECT_EQ(inspection().workingDirectory(42)->size(), 1024U);
}

TEST_F(MacProcessInspectionTest, noFolderWhenItIsEmptyOrOfAnotherLength) {
    kernel_.add(42, "node");
    EXPECT_FALSE(inspection().workingDirectory(42));
    for (const int length : {-1, 0, 2351, 2353}) {
        kernel_.calls.pidInfo = [length](Pid, int flavour, std::uint64_t, void* buffer, int size) {
            EXPECT_EQ(flavour, 9);
            std::memset(buffer, 'x', static_cast<std::size_t>(size));
            return length;
        };
        EXPECT_FALSE(inspection().workingDirectory(42)) << length;
    }
}

TEST_F(MacProcessInspectionTest, pathsAloneTellTheSystemsPrograms) {
    kernel_.add(42, "node");
    EXPECT_FALSE(inspection().belongsToSystem(42));
}

}  // namespace
}  // namespace tolvane::machost
