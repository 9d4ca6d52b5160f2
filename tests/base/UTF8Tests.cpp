#include "base/UTF8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace tolvane {
namespace {

/// As in the tables below: R stands for the replacement character.
std::string drawn(const std::string& text) {
    std::string result;
    for (const char each : text) result += each == 'R' ? std::string("\xEF\xBF\xBD") : std::string(1, each);
    return result;
}

TEST(UTF8, leavesValidTextAsItIs) {
    for (const std::string text : {"", "plain", "h\u00e9llo", "\u65e5\u672c", "\U0001F600", "\U0010FFFF", "\uFFFD"}) {
        EXPECT_TRUE(UTF8::isValid(text));
        EXPECT_EQ(UTF8::repaired(text), text);
    }
}

TEST(UTF8, keepsBytesOfZero) {
    const std::string text("a\0b\0", 4);
    EXPECT_EQ(UTF8::repaired(text), text);
    EXPECT_EQ(UTF8::repaired(text + "\xFF"), text + drawn("R"));
}

struct Broken {
    const char* bytes;
    const char* repaired;
};

/// The first three rows are the Unicode standard's own tables 3-8 to 3-11 on maximal subparts.
constexpr Broken broken[] = {
    {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", "RRRRRRRRA"},
    {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", "RRRRRRRRA"},
    {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", "RRRRA"},
    {"\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64", "aRRRbRcRRd"},
    {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", "RRRRRARRB"},
    {"\xE2\x82", "R"},
    {"\xF0\x9F\x98", "R"},
    {"\xF8\x88\x80\x80\x80", "RRRRR"},
    {"caf\xE9", "cafR"},
    {"\xE9t\xE9", "RtR"},
};

TEST(UTF8, replacesEachLongestBrokenPartByOneMark) {
    for (const auto& [bytes, repaired] : broken) {
        EXPECT_FALSE(UTF8::isValid(bytes));
        EXPECT_EQ(UTF8::repaired(bytes), drawn(repaired)) << bytes;
    }
}

std::string randomBytes(std::mt19937& random) {
    // Lead and trail bytes of every kind, so that short texts come close to being characters.
    constexpr std::string_view alphabet("\0a\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xDF\xE0\xE1\xED\xEF\xF0\xF1\xF4\xF5\xFF",
                                        20);
    std::string bytes(random() % 24, ' ');
    for (char& byte : bytes) byte = alphabet[random() % alphabet.size()];
    return bytes;
}

TEST(UTF8, whatWasRepairedIsValidAndRepairedForGood) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        const auto bytes = randomBytes(random);
        const auto repaired = UTF8::repaired(bytes);
        ASSERT_TRUE(UTF8::isValid(repaired));
        ASSERT_EQ(UTF8::repaired(repaired), repaired);
        ASSERT_EQ(UTF8::isValid(bytes), repaired == bytes);
    }
}

TEST(UTF8, repairsTwoTextsAroundAZeroAsItRepairsEach) {
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        const auto first = randomBytes(random);
        const auto second = randomBytes(random);
        const std::string zero(1, '\0');
        ASSERT_EQ(UTF8::repaired(first + zero + second), UTF8::repaired(first) + zero + UTF8::repaired(second));
    }
}

}  // namespace
}  // namespace tolvane
