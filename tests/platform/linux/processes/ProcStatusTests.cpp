#include "platform/linux/processes/ProcStatus.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/Fixtures.h"

namespace tolvane::linuxhost {

using testing::fixture;

namespace {

constexpr std::string_view text =
    "Name:\tnode\nUmask:\t0022\nState:\tS (sleeping)\nUid:\t1000\t1001\t1000\t1000\nGid:\t7\t7\t7\t7\n"
    "NSpid:\t4312\nVmHWM:\t  300000 kB\nRssAnon:\t   97240 kB\nRssFile:\t 30000 kB\nVmSwap:\t    1024 "
    "kB\nThreads:\t11\n";

}  // namespace

TEST(ProcStatus, readsUserMemoryAndSwap) {
    const auto status = parseProcStatus(text);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->uid, 1001u);
    EXPECT_EQ(status->anonymous, 97240u * 1024);
    EXPECT_EQ(status->swapped, 1024u * 1024);
    EXPECT_FALSE(status->inOtherPidNamespace);
}

TEST(ProcStatus, readsARecordedOne) {
    const auto status = parseProcStatus(fixture("status-shell"));
    ASSERT_TRUE(status);
    EXPECT_EQ(status->uid, 0u);
    EXPECT_GT(status->anonymous.value_or(0), 0u);
    EXPECT_FALSE(status->inOtherPidNamespace);
}

TEST(ProcStatus, aKernelThreadHasNoMemory) {
    const auto status = parseProcStatus(fixture("status-kernel-thread"));
    ASSERT_TRUE(status);
    EXPECT_FALSE(status->anonymous);
    EXPECT_EQ(status->swapped, 0u);
}

TEST(ProcStatus, aZombieHasNoMemory) { EXPECT_FALSE(parseProcStatus(fixture("status-zombie"))->anonymous); }

TEST(ProcStatus, twoNumbersMeanAnotherPidNamespace) {
    EXPECT_TRUE(parseProcStatus(fixture("status-pid-namespace"))->inOtherPidNamespace);
    EXPECT_FALSE(parseProcStatus("Name:\tx\nUid:\t0\t0\t0\t0\n")->inOtherPidNamespace);
}

TEST(ProcStatus, aNameThatLooksLikeALineIsNone) {
    // The kernel writes line ends in names as "\n".
    const auto status = parseProcStatus("Name:\tUid:\\nRssAnon:\nUid:\t5\t6\t5\t5\nRssAnon:\t1 kB\n");
    ASSERT_TRUE(status);
    EXPECT_EQ(status->uid, 6u);
    EXPECT_EQ(status->anonymous, 1024u);
    EXPECT_TRUE(parseProcStatus(fixture("status-hostile-name")));
}

TEST(ProcStatus, anotherOrderOfLinesDoesNotMatter) {
    const auto status = parseProcStatus("Name:\tx\nVmSwap:\t2 kB\nRssAnon:\t1 kB\nUid:\t5\t6\t5\t5\n");
    ASSERT_TRUE(status);
    EXPECT_EQ(status->uid, 6u);
    EXPECT_EQ(status->anonymous, 1024u);
    EXPECT_EQ(status->swapped, 2048u);
}

TEST(ProcStatus, aTruncatedOneIsNoneOrWithoutItsLastLines) {
    for (std::size_t length = 0; length < text.size(); ++length) {
        const auto status = parseProcStatus(text.substr(0, length));
        if (status) EXPECT_EQ(status->uid, 1001u);
        if (status && status->anonymous) EXPECT_EQ(status->anonymous, 97240u * 1024);
    }
    EXPECT_FALSE(parseProcStatus(""));
    EXPECT_FALSE(parseProcStatus("Name:\tx\nUid:\tnobody\n"));
}

}  // namespace tolvane::linuxhost
