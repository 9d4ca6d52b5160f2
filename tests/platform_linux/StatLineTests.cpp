#include "platform/linux/StatLine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/Files.h"

namespace tolvane::linuxhost {

namespace {

const std::string rest = " S 4290 4312 4200 34816 4312 4194304 81433 0 0 0 512 77 0 0 20 0 11 0 178069 1187438592 1\n";

}  // namespace

TEST(StatLine, readsTheFieldsThatMatter) {
    EXPECT_EQ(parseStatLine("4312 (node)" + rest),
              (StatLine{.state = 'S', .parent = 4290, .session = 4200, .terminal = 34816, .startTicks = 178069}));
}

TEST(StatLine, namesMayHoldAnything) {
    for (const char* name : {"(foo) Z ", "a\nb", ")", "", "((((", "\xff\xfe"}) {
        EXPECT_EQ(parseStatLine("1 (" + std::string(name) + ")" + rest).value_or(StatLine{}).startTicks, 178069U)
            << name;
    }
}

TEST(StatLine, tellsTerminalWindowsFromConsoles) {
    EXPECT_TRUE((StatLine{.terminal = 34816}.isOnPseudoTerminal()));
    EXPECT_TRUE((StatLine{.terminal = 143U << 8U}.isOnPseudoTerminal()));
    EXPECT_FALSE((StatLine{.terminal = 0}.isOnPseudoTerminal()));
    EXPECT_FALSE((StatLine{.terminal = 1025}.isOnPseudoTerminal()));
}

TEST(StatLine, shortAndStrangeLinesAreNone) {
    for (const char* line : {"", "1", "1 (a", "1 (a)", "1 (a) S", "1 (a) S 1 1 1 0 1 1 1 1 1 1 1 1 1 1 1 1 1 1",
                             "1 (a) S x 1 1 0 1 1 1 1 1 1 1 1 1 1 1 1 1 1 5"}) {
        EXPECT_EQ(parseStatLine(line), std::nullopt) << line;
    }
}

TEST(StatLine, readsTheRealKernel) {
    const auto stat = parseStatLine(readWholeFile("/proc/self/stat", 65536).value_or(""));
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->parent, ::getppid());
    EXPECT_EQ(stat->session, ::getsid(0));
}

}  // namespace tolvane::linuxhost
