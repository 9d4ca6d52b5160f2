#include "platform/linux/processes/ProcStat.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/Fixtures.h"

namespace tolvane::linuxhost {

using testing::fixture;

namespace {

constexpr std::string_view numbers =
    "4290 4312 4290 34816 4312 4194304 81433 0 0 0 512 77 0 0 20 0 11 0 178069 1187438592 24310 "
    "18446744073709551615 4198400 61446085 140724560171024 0 0 0 0 4096 134234626 0 0 0 17 1 0 0 0 0 0 78224888 "
    "78366728 104947712 140724560178453 140724560178458 140724560178458 140724560181186 0\n";

std::string lineNamed(std::string_view comm, std::string_view state = "S") {
    return "4312 (" + std::string(comm) + ") " + std::string(state) + " " + std::string(numbers);
}

std::string withNumber(std::string_view old, std::string_view now) {
    std::string line = lineNamed("node");
    return line.replace(line.find(old), old.size(), now);
}

}  // namespace

TEST(ProcStat, readsTheFieldsOfALine) {
    const auto line = lineNamed("node");
    const auto stat = parseProcStat(line);
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->pid, 4312);
    EXPECT_EQ(stat->comm, "node");
    EXPECT_EQ(stat->state, 'S');
    EXPECT_EQ(stat->ppid, 4290);
    EXPECT_EQ(stat->terminal, 34816u);
    EXPECT_EQ(stat->minorFaults, 81433u);
    EXPECT_EQ(stat->userTicks, 512u);
    EXPECT_EQ(stat->systemTicks, 77u);
    EXPECT_EQ(stat->threads, 11u);
    EXPECT_EQ(stat->startTicks, 178069u);
    EXPECT_EQ(stat->residentPages, 24310u);
    EXPECT_NE(stat->execStamp, 0u);
    EXPECT_FALSE(stat->isKernelThread());
    EXPECT_FALSE(stat->isGone());
    EXPECT_TRUE(stat->isOnPseudoTerminal());
}

TEST(ProcStat, readsRecordedLines) {
    const auto line = fixture("stat-shell");
    const auto shell = parseProcStat(line);
    ASSERT_TRUE(shell);
    EXPECT_EQ(shell->comm, "bash");
    EXPECT_GT(shell->startTicks, 0u);
    EXPECT_GT(shell->residentPages, 0u);
    EXPECT_FALSE(shell->isGone());
}

TEST(ProcStat, knowsAKernelThread) {
    const auto line = fixture("stat-kernel-thread");
    const auto stat = parseProcStat(line);
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->comm, "kthreadd");
    EXPECT_TRUE(stat->isKernelThread());
    EXPECT_EQ(stat->execStamp, 0u);
    EXPECT_FALSE(stat->isOnPseudoTerminal());
}

TEST(ProcStat, aZombieIsGone) {
    const auto line = fixture("stat-zombie");
    const auto stat = parseProcStat(line);
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->state, 'Z');
    EXPECT_TRUE(stat->isGone());
}

TEST(ProcStat, aDeadFirstThreadWithOthersAliveIsNotGone) {
    const auto line = lineNamed("server", "Z");
    EXPECT_FALSE(parseProcStat(line)->isGone());
    const auto last = withNumber(" 20 0 11 ", " 20 0 1 ");
    const auto alone = last.substr(0, last.find(") ") + 2) + "Z" + last.substr(last.find(") ") + 3);
    EXPECT_TRUE(parseProcStat(alone)->isGone());
}

TEST(ProcStat, aNameMayHoldBracketsLineEndsAndAnyByte) {
    for (const std::string_view comm : {"foo) Z ", "a) b (c", ")", "(", "", " ", "a\nb", "\xff\xfe", "x) S 1 2 3"}) {
        const auto line = lineNamed(comm);
        const auto stat = parseProcStat(line);
        ASSERT_TRUE(stat) << comm;
        EXPECT_EQ(stat->comm, comm);
        EXPECT_EQ(stat->state, 'S') << comm;
        EXPECT_EQ(stat->startTicks, 178069u) << comm;
    }
}

TEST(ProcStat, readsARecordedHostileName) {
    const auto line = fixture("stat-hostile-name");
    const auto stat = parseProcStat(line);
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->comm, "foo) Z \n(\xff");
    EXPECT_EQ(stat->state, 'R');
}

TEST(ProcStat, everyTruncationIsNoneOrWhole) {
    const auto line = lineNamed("node");
    const auto whole = parseProcStat(line);
    for (std::size_t length = 0; length < line.size(); ++length) {
        const auto part = parseProcStat(std::string_view(line).substr(0, length));
        if (part) EXPECT_EQ(part->startTicks, whole->startTicks) << length;
    }
    EXPECT_FALSE(parseProcStat(""));
    EXPECT_FALSE(parseProcStat("4312 (node) S"));
    EXPECT_FALSE(parseProcStat("4312 (node"));
    EXPECT_FALSE(parseProcStat(")("));
    EXPECT_FALSE(parseProcStat("4312 (node) S four 4312 4290 34816"));
}

TEST(ProcStat, theStampMovesWithEachAddressThatAnExecSets) {
    const auto line = lineNamed("node");
    const auto stamp = parseProcStat(line)->execStamp;
    const auto stampWith = [](std::string_view old, std::string_view now) {
        return parseProcStat(withNumber(old, now))->execStamp;
    };
    EXPECT_NE(stampWith("4198400", "4198401"), stamp);
    EXPECT_NE(stampWith("140724560171024", "140724560171040"), stamp);
    EXPECT_NE(stampWith("140724560178453", "140724560178454"), stamp);
    EXPECT_EQ(stampWith(" 512 77 ", " 513 78 "), stamp);
}

TEST(ProcStat, theStampIsZeroWhereTheAddressesAreHidden) {
    // To other users the kernel shows 1 as begin and end of the code, and 0 for the rest.
    auto line = withNumber("4198400 61446085 140724560171024", "1 1 0");
    line.replace(line.find("140724560178453"), 15, "0");
    EXPECT_EQ(parseProcStat(line)->execStamp, 0u);
}

}  // namespace tolvane::linuxhost
