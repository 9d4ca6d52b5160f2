#include "platform/macos/kernel/ProcStrings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A block with the count as given, whatever follows it.
std::string blockOf(std::int32_t count, std::string_view rest) {
    auto block = argumentsBlock("", {});
    for (std::size_t index = 0; index < 4; ++index) {
        block[index] = static_cast<char>((static_cast<std::uint32_t>(count) >> (8 * index)) & 0xFFU);
    }
    return block.substr(0, 4) + std::string(rest);
}

TEST(ProcStrings, readsArgumentsAndEnvironment) {
    const auto read = procStrings(argumentsBlock("/opt/node", {"node", "server.js"}, {"HOME=/home/ada", "A="}));
    EXPECT_THAT(read.args.strings(), ElementsAre("node", "server.js"));
    EXPECT_THAT(read.env, ElementsAre("HOME=/home/ada", "A="));
}

TEST(ProcStrings, countIsLittleEndian) {
    using namespace std::string_view_literals;
    EXPECT_THAT(parseProcArgs("\2\0\0\0x\0a\0b\0c\0"sv).strings(), ElementsAre("a", "b"));
    EXPECT_THAT(parseProcArgs("\0\0\0\2x\0a\0b\0c\0"sv).strings(), ElementsAre("a", "b", "c"));
}

TEST(ProcStrings, blockWithFewerArgumentsThanDeclaredGivesThoseAndNoEnvironment) {
    using namespace std::string_view_literals;
    const auto read = procStrings(blockOf(3, "/x\0a\0b\0"sv));
    EXPECT_THAT(read.args.strings(), ElementsAre("a", "b"));
    EXPECT_THAT(read.env, IsEmpty());
}

TEST(ProcStrings, lastArgumentMayEndWithTheBlock) {
    using namespace std::string_view_literals;
    const auto read = procStrings(blockOf(2, "/x\0a\0tail"sv));
    EXPECT_THAT(read.args.strings(), ElementsAre("a", "tail"));
    EXPECT_THAT(read.env, IsEmpty());
}

TEST(ProcStrings, lastEntryMayEndWithTheBlock) {
    using namespace std::string_view_literals;
    EXPECT_THAT(parseProcEnv(blockOf(1, "/x\0a\0A=1\0B=2"sv)), ElementsAre("A=1", "B=2"));
}

TEST(ProcStrings, shortBlocksGiveNothing) {
    using namespace std::string_view_literals;
    for (const auto block : {""sv, "\1"sv, "\1\0\0"sv, "\1\0\0\0"sv}) EXPECT_EQ(procStrings(block), ProcStrings{});
}

TEST(ProcStrings, blockThatEndsInTheExecutableOrThePaddingGivesNothing) {
    using namespace std::string_view_literals;
    EXPECT_EQ(procStrings(blockOf(1, "/never/ended")), ProcStrings{});
    EXPECT_EQ(procStrings(blockOf(1, "/x\0\0\0\0"sv)), ProcStrings{});
}

TEST(ProcStrings, emptyExecutableIsPaddingAsWell) {
    using namespace std::string_view_literals;
    EXPECT_THAT(parseProcArgs(blockOf(1, "\0\0a\0"sv)).strings(), ElementsAre("a"));
}

TEST(ProcStrings, emptyArgumentsCount) {
    using namespace std::string_view_literals;
    const auto read = procStrings(blockOf(3, "/x\0a\0\0b\0A=1\0"sv));
    EXPECT_THAT(read.args.strings(), ElementsAre("a", "", "b"));
    EXPECT_THAT(read.env, ElementsAre("A=1"));
}

TEST(ProcStrings, emptyEntryEndsTheEnvironment) {
    using namespace std::string_view_literals;
    EXPECT_THAT(parseProcEnv(blockOf(1, "/x\0a\0A=1\0\0B=2\0"sv)), ElementsAre("A=1"));
}

TEST(ProcStrings, countOfZeroOrLessTakesNoArguments) {
    using namespace std::string_view_literals;
    for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
        const auto read = procStrings(blockOf(count, "/x\0A=1\0"sv));
        EXPECT_THAT(read.args, IsEmpty());
        EXPECT_THAT(read.env, ElementsAre("A=1"));
    }
}

TEST(ProcStrings, hugeCountTakesWhatIsThere) {
    using namespace std::string_view_literals;
    const auto read = procStrings(blockOf(std::numeric_limits<std::int32_t>::max(), "/x\0a\0b\0"sv));
    EXPECT_THAT(read.args.strings(), ElementsAre("a", "b"));
}

TEST(ProcStrings, invalidUTF8IsRepairedTextByText) {
    const auto read = procStrings(argumentsBlock("/x\xFF", {"caf\xE9", "\xE2\x82"}, {"A=\xC3"}));
    EXPECT_THAT(read.args.strings(), ElementsAre("caf\uFFFD", "\uFFFD"));
    EXPECT_THAT(read.env, ElementsAre("A=\uFFFD"));
}

std::vector<std::string> randomTexts(std::mt19937& random, bool emptyOnesToo) {
    std::vector<std::string> texts(random() % 6);
    for (auto& text : texts) {
        const auto length = random() % 12 + (emptyOnesToo ? 0 : 1);
        for (std::size_t each = 0; each < length; ++each) text += random() % 5 == 0 ? "\u00e9" : "=";
    }
    return texts;
}

TEST(ProcStrings, readsBackWhatABlockWasMadeOf) {
    std::mt19937 random(3);
    for (int round = 0; round < 5000; ++round) {
        auto args = randomTexts(random, true);
        // An empty first argument cannot be told from the padding before it.
        args.insert(args.begin(), "program");
        const auto env = randomTexts(random, false);
        const auto block = argumentsBlock("/opt/program", args, env);
        const auto read = procStrings(block);
        ASSERT_EQ(read.args.strings(), args);
        ASSERT_EQ(read.env, env);
        ASSERT_EQ(parseProcArgs(block), read.args);
        ASSERT_EQ(parseProcEnv(block), read.env);
    }
}

/// The same steps, written byte by byte.
ProcStrings slowly(const std::string& block) {
    if (block.size() <= 4) return {};
    std::size_t at = 4;
    while (at < block.size() && block[at] != '\0') ++at;
    while (at < block.size() && block[at] == '\0') ++at;
    std::int64_t missing = 0;
    for (std::size_t index = 4; index-- > 0;) missing = missing * 256 + static_cast<unsigned char>(block[index]);
    if (missing > std::numeric_limits<std::int32_t>::max()) missing = 0;
    std::vector<std::string> args;
    std::vector<std::string> env;
    while (at < block.size()) {
        std::string text;
        while (at < block.size() && block[at] != '\0') text += block[at++];
        ++at;
        if (missing-- > 0) {
            args.push_back(text);
        } else if (text.empty()) {
            break;
        } else {
            env.push_back(text);
        }
    }
    return {.args = TextList(args), .env = env};
}

TEST(ProcStrings, hostileBlocksAreReadWithinTheirBounds) {
    std::mt19937 random(5);
    for (int round = 0; round < 20000; ++round) {
        const std::size_t size = random() % 40;
        std::string block(size, '\0');
        for (char& byte : block) byte = "\0\0\0\1\2ab/"[random() % 8];
        // Memory of the very size, so that one byte too far is seen.
        const auto exact = std::make_unique<char[]>(size);
        std::copy(block.begin(), block.end(), exact.get());
        ASSERT_EQ(procStrings({exact.get(), size}), slowly(block));
    }
}

}  // namespace
}  // namespace tolvane::machost
