#include "app/rows/TableRow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> ids(const std::vector<TableRow>& rows) {
    std::vector<std::string> ids;
    for (const auto& row : rows) ids.push_back(row.id);
    return ids;
}

std::vector<std::string> titles(const std::vector<TableRow>& rows) {
    std::vector<std::string> titles;
    for (const auto& row : rows) titles.push_back(row.title);
    return titles;
}

std::vector<TableRow> threeRows() {
    return {{.id = "a", .title = "beta", .memory = 2, .cpu = 1},
            {.id = "b", .title = "Alpha", .memory = 3, .cpu = 1},
            {.id = "c", .title = "alpha", .memory = 2, .cpu = 2}};
}

TEST(TableRowSort, ordersByOneField) {
    auto rows = threeRows();
    TableRow::sort(rows, {{RowField::memory, false}});
    EXPECT_THAT(ids(rows), ElementsAre("b", "a", "c"));
    TableRow::sort(rows, {{RowField::cpu, true}});
    EXPECT_THAT(ids(rows), ElementsAre("b", "a", "c"));
}

TEST(TableRowSort, comparesTitlesAsPlainText) {
    auto rows = threeRows();
    TableRow::sort(rows, {{RowField::title, true}});
    EXPECT_THAT(titles(rows), ElementsAre("Alpha", "alpha", "beta"));
}

TEST(TableRowSort, keepsEqualRowsAsTheyStandInBothDirections) {
    auto rows = threeRows();
    TableRow::sort(rows, {{RowField::compressed, true}});
    EXPECT_THAT(ids(rows), ElementsAre("a", "b", "c"));
    TableRow::sort(rows, {{RowField::compressed, false}});
    EXPECT_THAT(ids(rows), ElementsAre("a", "b", "c"));
    TableRow::sort(rows, {});
    EXPECT_THAT(ids(rows), ElementsAre("a", "b", "c"));
}

TEST(TableRowSort, settlesTiesByTheNextStep) {
    auto rows = threeRows();
    TableRow::sort(rows, {{RowField::memory, true}, {RowField::cpu, false}});
    EXPECT_THAT(ids(rows), ElementsAre("c", "a", "b"));
}

TEST(TableRowSort, putsWhatHasNoStartLastInAscendingAge) {
    std::vector<TableRow> rows{
        {.id = "unknown"}, {.id = "young", .started = Date{Seconds{9}}}, {.id = "old", .started = Date{Seconds{1}}}};
    TableRow::sort(rows, {{RowField::age, true}});
    EXPECT_THAT(ids(rows), ElementsAre("old", "young", "unknown"));
}

TEST(TableRowSort, ordersByEachField) {
    const TableRow low{.id = "low", .title = "a"};
    TableRow high{.id = "high", .title = "b", .memory = 1, .inRAM = 1, .compressed = 1, .cpu = 1};
    high.unusedSince = Date{Seconds{1}};
    for (const auto field : {RowField::title, RowField::memory, RowField::inRAM, RowField::compressed, RowField::cpu,
                             RowField::unusedSince}) {
        std::vector<TableRow> rows{high, low};
        TableRow::sort(rows, {{field, true}});
        EXPECT_THAT(ids(rows), ElementsAre("low", "high"));
        TableRow::sort(rows, {{field, false}});
        EXPECT_THAT(ids(rows), ElementsAre("high", "low"));
    }
}

TEST(TableRowSort, reachesEveryLevel) {
    const std::vector<TableRow> leaves{{.id = "x", .memory = 1}, {.id = "y", .memory = 2}};
    std::vector<TableRow> rows{TableRow::group("outer", "", {}, {}, {TableRow::group("inner", "", {}, {}, leaves)})};
    const auto& inner = rows[0].children->front();
    const auto sorted = rows[0].sorted({{RowField::memory, false}});
    EXPECT_THAT(ids(*sorted.children->front().children), ElementsAre("y", "x"));
    EXPECT_THAT(ids(*inner.children), ElementsAre("x", "y"));
    TableRow::sort(rows, {{RowField::memory, false}});
    EXPECT_THAT(ids(*rows[0].children->front().children), ElementsAre("y", "x"));
}

TEST(TableRowSort, takesFiguresThatAreNoNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<TableRow> rows;
    for (int index = 0; index < 200; ++index) {
        rows.push_back({.id = std::to_string(index), .cpu = index % 3 == 0 ? nan : index});
    }
    TableRow::sort(rows, {{RowField::cpu, false}});
    EXPECT_EQ(rows.size(), 200U);
}

TEST(TableRowFind, looksThroughAllLevels) {
    const std::vector<TableRow> leaves{{.id = "x"}, {.id = "y", .title = "first"}};
    const auto row = TableRow::group("outer", "", {}, {}, {TableRow::group("inner", "", {}, {}, leaves), {.id = "y"}});
    ASSERT_NE(row.find("y"), nullptr);
    EXPECT_EQ(row.find("y")->title, "first");
    EXPECT_EQ(row.find("outer"), &row);
    EXPECT_EQ(row.find("nothing"), nullptr);
}

TEST(TableRowSelected, isSortedByMemoryAndThenById) {
    const std::vector<TableRow> rows{{.id = "b", .memory = 1},
                                     {.id = "a", .memory = 1},
                                     TableRow::group("g", "", {}, {}, {{.id = "c", .memory = 5}, {.id = "d"}})};
    EXPECT_THAT(ids(TableRow::selected({"a", "b", "c"}, rows)), ElementsAre("c", "a", "b"));
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
    std::vector<TableRow> rows;
    for (std::size_t index = 0; index < count; ++index)
        rows.push_back({.title = std::string(1, static_cast<char>('A' + index))});
    return TableRow::forceQuitQuestion(rows, locale);
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
