#include "core/words/TextSearch.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

bool contains(std::string_view text, std::string_view wanted, std::string_view locale = "en_US") {
    return TextSearch(wanted, locale).isIn(text);
}

TEST(TextSearch, ignoresCase) {
    EXPECT_TRUE(contains("Google Chrome", "CHROME"));
    EXPECT_TRUE(contains("NODE", "node"));
    EXPECT_FALSE(contains("node", "nodes"));
}

TEST(TextSearch, findsAtEveryPlace) {
    EXPECT_TRUE(contains("abc", "a"));
    EXPECT_TRUE(contains("abc", "b"));
    EXPECT_TRUE(contains("abc", "c"));
    EXPECT_TRUE(contains("abc", "ABC"));
    EXPECT_TRUE(contains("aab", "ab"));
    EXPECT_FALSE(contains("abc", "abcd"));
    EXPECT_FALSE(contains("", "a"));
}

TEST(TextSearch, findsNothingInEverything) {
    EXPECT_TRUE(contains("abc", ""));
    EXPECT_TRUE(contains("", ""));
}

TEST(TextSearch, takesBlanksAsTheyStand) {
    EXPECT_TRUE(contains("puma 5", "A 5"));
    EXPECT_FALSE(contains("puma5", "a 5"));
}

TEST(TextSearch, ignoresCaseOfAllLetters) {
    EXPECT_TRUE(contains("ÜBERSICHT", "übersicht"));
    EXPECT_TRUE(contains("Straße", "STRASSE"));
    EXPECT_TRUE(contains("ΣΙΣΥΦΟΣ", "σίσυφος") == false);
    EXPECT_TRUE(contains("ΣΙΣΥΦΟΣ", "σισυφος"));
}

TEST(TextSearch, tellsAccentedLettersFromPlainOnes) {
    EXPECT_FALSE(contains("cafe", "café"));
    EXPECT_FALSE(contains("café", "cafe"));
}

TEST(TextSearch, findsLettersHoweverTheyAreComposed) {
    EXPECT_TRUE(contains("Cafe\u0301", "caf\u00e9"));
    EXPECT_TRUE(contains("Caf\u00e9", "cafe\u0301"));
}

TEST(TextSearch, foldsLettersThatComeOutPlain) {
    EXPECT_TRUE(contains("kelvin", "\u212aELVIN"));
    EXPECT_TRUE(contains("\u212aelvin", "kelvin"));
}

TEST(TextSearch, keepsTheDotlessIApartWhereItIsALetter) {
    EXPECT_TRUE(contains("INFO", "info", "en_US"));
    EXPECT_FALSE(contains("INFO", "info", "tr_TR"));
    EXPECT_TRUE(contains("INFO", "ınfo", "tr_TR"));
    EXPECT_TRUE(contains("İNFO", "info", "az"));
    EXPECT_TRUE(contains("info", "İNFO", "tr"));
    EXPECT_TRUE(contains("NODE", "node", "tr_TR"));
    EXPECT_FALSE(contains("info", "ınfo", "en_US"));
}

TEST(TextSearch, looksAtTheLanguageOfTheLocaleAlone) { EXPECT_TRUE(contains("INFO", "info", "trv_TW")); }

TEST(TextSearch, survivesBytesThatAreNoText) {
    EXPECT_TRUE(contains("node \xff\xfe x", "NODE"));
    EXPECT_FALSE(contains("\xc3", "node"));
    EXPECT_TRUE(contains("node", std::string_view("\0", 0)));
    EXPECT_TRUE(contains(std::string_view("a\0b", 3), std::string_view("A\0B", 3)));
}

}  // namespace
}  // namespace tolvane
