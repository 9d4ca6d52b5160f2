#include "app/Line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> ids(const std::vector<Line>& lines) {
    std::vector<std::string> ids;
    for (const auto& line : lines) ids.push_back(line.id);
    return ids;
}

std::vector<std::string> titles(const std::vector<Line>& lines) {
    std::vector<std::string> titles;
    for (const auto& line : lines) titles.push_back(line.title);
    return titles;
}

std::vector<Line> threeLines() {
    return {{.id = "a", .title = "beta", .memory = 2, .cpu = 1},
            {.id = "b", .title = "Alpha", .memory = 3, .cpu = 1},
            {.id = "c", .title = "alpha", .memory = 2, .cpu = 2}};
}

TEST(LineSort, ordersByOneField) {
    auto lines = threeLines();
    Line::sort(lines, {{LineField::memory, false}});
    EXPECT_THAT(ids(lines), ElementsAre("b", "a", "c"));
    Line::sort(lines, {{LineField::cpu, true}});
    EXPECT_THAT(ids(lines), ElementsAre("b", "a", "c"));
}

TEST(LineSort, comparesTitlesAsPlainText) {
    auto lines = threeLines();
    Line::sort(lines, {{LineField::title, true}});
    EXPECT_THAT(titles(lines), ElementsAre("Alpha", "alpha", "beta"));
}

TEST(LineSort, keepsEqualLinesAsTheyStandInBothDirections) {
    auto lines = threeLines();
    Line::sort(lines, {{LineField::compressed, true}});
    EXPECT_THAT(ids(lines), ElementsAre("a", "b", "c"));
    Line::sort(lines, {{LineField::compressed, false}});
    EXPECT_THAT(ids(lines), ElementsAre("a", "b", "c"));
    Line::sort(lines, {});
    EXPECT_THAT(ids(lines), ElementsAre("a", "b", "c"));
}

TEST(LineSort, settlesTiesByTheNextStep) {
    auto lines = threeLines();
    Line::sort(lines, {{LineField::memory, true}, {LineField::cpu, false}});
    EXPECT_THAT(ids(lines), ElementsAre("c", "a", "b"));
}

TEST(LineSort, putsWhatHasNoStartLastInAscendingAge) {
    std::vector<Line> lines{
        {.id = "unknown"}, {.id = "young", .started = Date{Seconds{9}}}, {.id = "old", .started = Date{Seconds{1}}}};
    Line::sort(lines, {{LineField::age, true}});
    EXPECT_THAT(ids(lines), ElementsAre("old", "young", "unknown"));
}

TEST(LineSort, ordersByEachField) {
    const Line low{.id = "low", .title = "a"};
    Line high{.id = "high", .title = "b", .memory = 1, .inRAM = 1, .compressed = 1, .cpu = 1};
    high.unusedSince = Date{Seconds{1}};
    for (const auto field : {LineField::title, LineField::memory, LineField::inRAM, LineField::compressed,
                             LineField::cpu, LineField::unusedSince}) {
        std::vector<Line> lines{high, low};
        Line::sort(lines, {{field, true}});
        EXPECT_THAT(ids(lines), ElementsAre("low", "high"));
        Line::sort(lines, {{field, false}});
        EXPECT_THAT(ids(lines), ElementsAre("high", "low"));
    }
}

TEST(LineSort, reachesEveryLevel) {
    const std::vector<Line> leaves{{.id = "x", .memory = 1}, {.id = "y", .memory = 2}};
    std::vector<Line> lines{Line::group("outer", "", {}, {}, {Line::group("inner", "", {}, {}, leaves)})};
    const auto& inner = lines[0].children->front();
    const auto sorted = lines[0].sorted({{LineField::memory, false}});
    EXPECT_THAT(ids(*sorted.children->front().children), ElementsAre("y", "x"));
    EXPECT_THAT(ids(*inner.children), ElementsAre("x", "y"));
    Line::sort(lines, {{LineField::memory, false}});
    EXPECT_THAT(ids(*lines[0].children->front().children), ElementsAre("y", "x"));
}

TEST(LineSort, takesFiguresThatAreNoNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<Line> lines;
    for (int index = 0; index < 200; ++index) {
        lines.push_back({.id = std::to_string(index), .cpu = index % 3 == 0 ? nan : index});
    }
    Line::sort(lines, {{LineField::cpu, false}});
    EXPECT_EQ(lines.size(), 200U);
}

TEST(LineFind, looksThroughAllLevels) {
    const std::vector<Line> leaves{{.id = "x"}, {.id = "y", .title = "first"}};
    const auto line = Line::group("outer", "", {}, {}, {Line::group("inner", "", {}, {}, leaves), {.id = "y"}});
    ASSERT_NE(line.find("y"), nullptr);
    EXPECT_EQ(line.find("y")->title, "first");
    EXPECT_EQ(line.find("outer"), &line);
    EXPECT_EQ(line.find("nothing"), nullptr);
}

TEST(LineSelected, isSortedByMemoryAndThenById) {
    const std::vector<Line> lines{{.id = "b", .memory = 1},
                                  {.id = "a", .memory = 1},
                                  Line::group("g", "", {}, {}, {{.id = "c", .memory = 5}, {.id = "d"}})};
    EXPECT_THAT(ids(Line::selected({"a", "b", "c"}, lines)), ElementsAre("c", "a", "b"));
}

TEST(LineSelected, skipsIdsThatNothingBears) {
    EXPECT_THAT(ids(Line::selected({"a", "gone"}, {{.id = "a"}})), ElementsAre("a"));
    EXPECT_THAT(Line::selected({"gone"}, {{.id = "a"}}), IsEmpty());
    EXPECT_THAT(Line::selected({}, {{.id = "a"}}), IsEmpty());
    EXPECT_THAT(Line::selected({"a"}, {}), IsEmpty());
}

TEST(LineSelected, takesTheFirstOfRepeatedIds) {
    const auto found = Line::selected({"a"}, {{.id = "a", .title = "first"}, {.id = "a", .title = "second"}});
    EXPECT_THAT(titles(found), ElementsAre("first"));
}

std::string question(std::size_t count, std::string_view locale = "en_US") {
    std::vector<Line> lines;
    for (std::size_t index = 0; index < count; ++index)
        lines.push_back({.title = std::string(1, static_cast<char>('A' + index))});
    return Line::forceQuitQuestion(lines, locale);
}

TEST(ForceQuitQuestion, namesUpToThree) {
    EXPECT_EQ(question(1), "Force quit A?");
    EXPECT_EQ(question(2), "Force quit A and B?");
    EXPECT_EQ(question(3), "Force quit A, B, and C?");
    EXPECT_EQ(question(3, "de_DE"), "Force quit A, B und C?");
}

TEST(ForceQuitQuestion, namesTwoOfFourAndCountsTheRest) {
    EXPECT_EQ(question(4), "Force quit A, B and 2 more?");
    EXPECT_EQ(question(9), "Force quit A, B and 7 more?");
}

}  // namespace
}  // namespace tolvane
