#include "app/preferences/Switches.h"

#include <gmock/gmock.h>

namespace tolvane {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

Switches parse(const std::vector<std::string>& arguments) {
    return parseSwitches(arguments, {"demo", "renderSnapshots", "openInterval"});
}

PreferenceValue text(const char* value) { return std::string(value); }

}  // namespace

TEST(Switches, pairsBecomeOverrides) {
    const Switches switches = parse({"-demo", "YES", "-renderSnapshots", "out"});
    EXPECT_THAT(switches.overrides,
                ElementsAre(Pair("demo", PreferenceValue(true)), Pair("renderSnapshots", text("out"))));
    EXPECT_THAT(switches.words, IsEmpty());
    EXPECT_THAT(switches.unknown, IsEmpty());
}

TEST(Switches, nothingGivesNothing) { EXPECT_THAT(parse({}).overrides, IsEmpty()); }

TEST(Switches, wordsOutsideOfPairsAreTold) {
    const Switches switches = parse({"a.tolvanerules", "-demo", "YES", "b", "-"});
    EXPECT_THAT(switches.words, ElementsAre("a.tolvanerules", "b", "-"));
    EXPECT_EQ(switches.overrides.size(), 1U);
}

TEST(Switches, anUnknownSwitchTakesItsValueAlong) {
    const Switches switches = parse({"-colour", "red", "--help", "-demo", "NO"});
    EXPECT_THAT(switches.unknown, ElementsAre("-colour", "--help"));
    EXPECT_THAT(switches.words, IsEmpty());
    EXPECT_THAT(switches.overrides, ElementsAre(Pair("demo", PreferenceValue(false))));
}

TEST(Switches, aSwitchWithoutAValueIsTold) {
    EXPECT_THAT(parse({"-demo"}).unknown, ElementsAre("-demo"));
    const Switches switches = parse({"-demo", "-renderSnapshots", "out"});
    EXPECT_THAT(switches.unknown, ElementsAre("-demo"));
    EXPECT_THAT(switches.overrides, ElementsAre(Pair("renderSnapshots", text("out"))));
}

TEST(Switches, aNegativeNumberIsAValue) {
    EXPECT_THAT(parse({"-openInterval", "-5"}).overrides,
                ElementsAre(Pair("openInterval", PreferenceValue(std::int64_t{-5}))));
}

TEST(Switches, theLastOfARepeatedKeyHolds) {
    EXPECT_THAT(parse({"-demo", "YES", "-demo", "NO"}).overrides, ElementsAre(Pair("demo", PreferenceValue(false))));
}

TEST(TypedValue, wordsOfTruthAreBools) {
    for (const char* word : {"YES", "true", "yes", "True"}) EXPECT_EQ(typedValue(word), PreferenceValue(true)) << word;
    for (const char* word : {"NO", "false", "no"}) EXPECT_EQ(typedValue(word), PreferenceValue(false)) << word;
}

TEST(TypedValue, digitsAreIntegers) {
    EXPECT_EQ(typedValue("5"), PreferenceValue(std::int64_t{5}));
    EXPECT_EQ(typedValue("0"), PreferenceValue(std::int64_t{0}));
    EXPECT_EQ(typedValue("-12"), PreferenceValue(std::int64_t{-12}));
    EXPECT_EQ(typedValue("99999999999999999999"), PreferenceValue(1e20));
}

TEST(TypedValue, digitsWithAPointAreDoubles) {
    EXPECT_EQ(typedValue("1.5"), PreferenceValue(1.5));
    EXPECT_EQ(typedValue(".5"), PreferenceValue(0.5));
    EXPECT_EQ(typedValue("-2."), PreferenceValue(-2.0));
}

TEST(TypedValue, theRestIsText) {
    for (const char* word : {"", ".", "-", "-.", "1.2.3", "5 ", "+5", "1e3", "nan", "inf", "0x10", "YESS", "out/dir"})
        EXPECT_EQ(typedValue(word), text(word)) << word;
}

}  // namespace tolvane
