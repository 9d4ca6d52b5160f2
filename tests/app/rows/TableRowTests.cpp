#include "app/rows/TableRow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> ids(const std::vector<TableRow>& lines) {
    std::vector<std::string> ids;
    for (const auto& line : lines) ids.push_back(line.id);
    return ids;
}

std::vector<std::string> titles(const std::vector<TableRow>& lines) {
    std::vector<std::string> titles;
    for (const auto& line : lines) titles.push_back(line.title);
    return titles;
}

std::vector<TableRow> threeLines() {
    return {{.id = "a", .title = "beta", .memory = 2, .cpu = 1},
            {.id = "b", .title = "Alpha", .memory = 3, .cpu = 1},
            {.id = "c", .title = "alpha", .memory = 2, .cpu = 2}};
}

TEST(TableRowSort, ordersByOneField) {
    auto lines = threeLines();
    TableRow::sort(lines, {{RowField::memory, false}});
    EXPECT_THAT(ids(lines), ElementsAre("b", "a", "c"));
    TableRow::sort(lines, {{RowField::cpu, true}});
    EXPECT_THAT(ids(lines), ElementsAre("b", "a", "c"));
}

TEST(TableRowSort, comparesTitlesAsPlainText) {
    auto lines = threeLines();
    TableRow::sort(lines, {{RowField::title, true}});
    EXPECT_THAT(titles(lines), ElementsAre("Alpha", "alpha", "beta"));
}

TEST(TableRowSort, keepsEqualLinesAsTheyStandInBothDirections) {
    auto lines = threeLines();
    TableRow::sort(lines, {{RowField::compressed, true}});
    EXPECT_THAT(ids(lines), ElementsAre("a", "b", "c"));
    TableRow::sort(lines, {{RowField::compressed, false}});
    EXPECT_THAT(ids(lines), ElementsAre("a", "b", "c"));
    TableRow::sort(lines, {});
    EXPECT_THAT(ids(lines), ElementsAre("a", "b", "c"));
}

TEST(TableRowSort, settlesTiesByTheNextStep) {
    auto lines = threeLines();
    TableRow::sort(lines, {{RowField::memory, true}, {RowField::cpu, false}});
    EXPECT_THAT(ids(lines), ElementsAre("c", "a", "b"));
}

TEST(TableRowSort, putsWhatHasNoStartLastInAscendingAge) {
    std::vector<TableRow> lines{
        {.id = "unknown"}, {.id = "young", .started = Date{Seconds{9}}}, {.id = "old", .started = Date{Seconds{1}}}};
    TableRow::sort(lines, {{RowField::age, true}});
    EXPECT_THAT(ids(lines), ElementsAre("old", "young", "unknown"));
}

TEST(TableRowSort, ordersByEachField) {
    const TableRow low{.id = "low", .title = "a"};
    TableRow high{.id = "high", .title = "b", .memory = 1, .inRAM = 1, .compressed = 1, .cpu = 1};
    high.unusedSince = Date{Seconds{1}};
    for (const auto field : {RowField::title, RowField::memory, RowField::inRAM, RowField::compressed, RowField::cpu,
                             RowField::unusedSince}) {
        std::vector<TableRow> lines{high, low};
        TableRow::sort(lines, {{field, true}});
        EXPECT_THAT(ids(lines), ElementsAre("low", "high"));
        TableRow::sort(lines, {{field, false}});
        EXPECT_THAT(ids(lines), ElementsAre("high", "low"));
    }
}

TEST(TableRowSort, reachesEveryLevel) {
    const std::vector<TableRow> leaves{{.id = "x", .memory = 1}, {.id = "y", .memory = 2}};
    std::vector<TableRow> lines{TableRow::group("outer", "", {}, {}, {TableRow::group("inner", "", {}, {}, leaves)})};
    const auto& inner = lines[0].children->front();
    const auto sorted = lines[0].sorted({{RowField::memory, false}});
    EXPECT_THAT(ids(*sorted.children->front().children), ElementsAre("y", "x"));
    EXPECT_THAT(ids(*inner.children), ElementsAre("x", "y"));
    TableRow::sort(lines, {{RowField::memory, false}});
    EXPECT_THAT(ids(*lines[0].children->front().children), ElementsAre("y", "x"));
}

TEST(TableRowSort, takesFiguresThatAreNoNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<TableRow> lines;
    for (int index = 0; index < 200; ++index) {
        lines.push_back({.id = std::to_string(index), .cpu = index % 3 == 0 ? nan : index});
    }
    TableRow::sort(lines, {{RowField::cpu, false}});
    EXPECT_EQ(lines.size(), 200U);
}

TEST(TableRowFind, looksThroughAllLevels) {
    const std::vector<TableRow> leaves{{.id = "x"}, {.id = "y", .title = "first"}};
    const auto line = TableRow::group("outer", "", {}, {}, {TableRow::group("inner", "", {}, {}, leaves), {.id = "y"}});
    ASSERT_NE(line.find("y"), nullptr);
    EXPECT_EQ(line.find("y")->title, "first");
    EXPECT_EQ(line.find("outer"), &line);
    EXPECT_EQ(line.find("nothing"), nullptr);
}

TEST(TableRowSelected, isSortedByMemoryAndThenById) {
    const std::vector<TableRow> lines{{.id = "b", .memory = 1},
                                      {.id = "a", .memory = 1},
                                      TableRow::group("g", "", {}, {}, {{.id = "c", .memory = 5}, {.id = "d"}})};
    EXPECT_THAT(ids(TableRow::selected({"a", "b", "c"}, lines)), ElementsAre("c", "a", "b"));
}

TEST(TableRowSelected, skipsIdsThatNothingBears) {
    EXPECT_THAT(ids(TableRow::selected({"a", "gone"}, {{.id = "a"}})), ElementsAre("a"));
    EXPECT_THAT(TableRow::selected({"gone"}, {{.id = "a"}}), IsEmpty());
    EXPECT_THAT(TableRow::selected({}, {{.id = "a"}}), IsEmpty());
    EXPECT_THAT(TableRow::selected({"a"}, {}), IsEmpty());
}

TEST(TableRowSelected, takesTheFirstOfRepeatedIds) {
    const auto found = TableRow::selected({"a"}, {{.id = "a", .title = "first"}, {.id = "a", .title = "second"}});
    EXPECT_THAT(titles(found), ElementsAre("first"));
}

std::string question(std::size_t count, std::string_view locale = "en_US") {
    std::vector<TableRow> lines;
    for (std::size_t index = 0; index < count; ++index)
        lines.push_back({.title = std::string(1, static_cast<char>('A' + index))});
    return TableRow::forceQuitQuestion(lines, locale);
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
