#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/screens/processes/ForceQuitQuestion.h"
#include "app/screens/processes/ProcessesView.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using fakes::appRow;
using fakes::MiB;
using fakes::projectRow;
using fakes::row;
using fakes::sessionRow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

ProcRow node() {
    auto made = projectRow(4711, "node", "/home/ada/Shop", 300 * MiB);
    made.sample.args = {"node", "/srv/app/Server.js", "--port", "3000"};
    return made;
}

ProcRow agent() { return sessionRow(52, "claude", "Fix Login", 200 * MiB); }
ProcRow chat() { return appRow(60, "Slack Helper", "/Applications/Slack.app", 100 * MiB); }
ProcRow chatToo() { return appRow(61, "Slack", "/Applications/Slack.app", 500 * MiB); }

std::vector<Pid> matching(std::string_view search, std::string_view locale = "en_US") {
    std::vector<Pid> pids;
    for (const auto& each : ProcessesView::rowsMatching({node(), agent(), chat(), chatToo()}, search, locale)) {
        pids.push_back(each.id());
    }
    return pids;
}

TEST(ProcessSearch, findsNamesInAnyCase) {
    EXPECT_THAT(matching("SLACK"), ElementsAre(60, 61));
    EXPECT_THAT(matching("slack h"), ElementsAre(60));
}

TEST(ProcessSearch, findsCommandLinesAcrossTheirBlanks) {
    EXPECT_THAT(matching("server.js --PORT"), ElementsAre(4711));
    EXPECT_THAT(matching("3000 "), IsEmpty());
}

TEST(ProcessSearch, findsThePathWhereArgumentsCannotBeRead) { EXPECT_THAT(matching("/opt/cla"), ElementsAre(52)); }

TEST(ProcessSearch, findsProjectsAndSessions) {
    EXPECT_THAT(matching("ada/shop"), ElementsAre(4711));
    EXPECT_THAT(matching("fix login"), ElementsAre(52));
}

TEST(ProcessSearch, findsPartsOfAPid) {
    EXPECT_THAT(matching("4711"), ElementsAre(4711));
    EXPECT_THAT(matching("71"), ElementsAre(4711));
    EXPECT_THAT(matching("6"), ElementsAre(60, 61));
}

TEST(ProcessSearch, doesNotKnowApplicationsByTheirPath) { EXPECT_THAT(matching("Applications"), IsEmpty()); }

TEST(ProcessSearch, ofNothingKeepsEverything) { EXPECT_THAT(matching(""), ElementsAre(4711, 52, 60, 61)); }

TEST(ProcessSearch, followsTheLocale) {
    EXPECT_THAT(matching("FIX"), ElementsAre(52));
    EXPECT_THAT(matching("FIX", "tr_TR"), IsEmpty());
    EXPECT_THAT(matching("FİX", "tr_TR"), ElementsAre(52));
}

Snapshot snapshot() {
    Snapshot made{.date = Date{Seconds{800'000'000}}, .rows = {node(), agent(), chat(), chatToo()}};
    made.memory.compressionRatio = 2;
    return made;
}

std::vector<TableRow> rows(Grouping grouping, std::string_view search, std::vector<RowOrder> order = {RowOrder{}}) {
    return ProcessesView::rowsOf(snapshot(), grouping, search, order, RowNames{}, "en_US");
}

auto ids(const std::vector<TableRow>& rows) {
    std::vector<std::string> ids;
    for (const auto& row : rows) ids.push_back(row.id);
    return ids;
}

TEST(ProcessRows, startWithTheLargestMemory) {
    const auto table = rows(Grouping::apps, "");
    ASSERT_THAT(ids(table), ElementsAre("/Applications/Slack.app", "pid:4711", "pid:52"));
    EXPECT_THAT(ids(*table[0].children), ElementsAre("pid:61", "pid:60"));
}

TEST(ProcessRows, areSortedOnEveryLevel) {
    const auto table = rows(Grouping::apps, "", {{RowField::memory, true}});
    ASSERT_THAT(ids(table), ElementsAre("pid:52", "pid:4711", "/Applications/Slack.app"));
    EXPECT_THAT(ids(*table[2].children), ElementsAre("pid:60", "pid:61"));
}

TEST(ProcessRows, countTheCompressedPartAtTheRatioOfTheMoment) {
    auto made = snapshot();
    made.rows = {node()};
    made.rows[0].sample.compressed = 100 * MiB;
    const auto table = ProcessesView::rowsOf(made, Grouping::all, "", {}, RowNames{}, "en_US");
    EXPECT_EQ(table[0].inRAM, 250 * MiB);
}

TEST(ProcessRows, ofASearchForAPidHoldTheGroupWithThatProcess) {
    const auto table = rows(Grouping::projects, "4711");
    ASSERT_THAT(ids(table), ElementsAre("project:/home/ada/Shop"));
    EXPECT_THAT(ids(*table[0].children), ElementsAre("pid:4711"));
}

TEST(ProcessRows, sumOnlyWhatTheSearchFinds) {
    EXPECT_EQ(rows(Grouping::apps, "slack")[0].memory, 600 * MiB);
    EXPECT_EQ(rows(Grouping::apps, "slack helper")[0].memory, 100 * MiB);
}

TEST(ProcessRows, areNoneWhenNothingMatches) {
    EXPECT_THAT(rows(Grouping::apps, "no such thing"), IsEmpty());
    EXPECT_THAT(TableRow::selected({"pid:52"}, rows(Grouping::apps, "no such thing")), IsEmpty());
}

std::string cell(const TableRow& row, ProcessColumn column, std::string_view locale = "en_US") {
    return ProcessesView::cellOf(row, column, Date{Seconds{10'000}}, locale);
}

TEST(ProcessCell, saysSizesInBytes) {
    const TableRow row{.title = "node", .memory = 512 * MiB, .inRAM = 300 * MiB, .compressed = MiB + MiB / 2};
    EXPECT_EQ(cell(row, ProcessColumn::name), "node");
    EXPECT_EQ(cell(row, ProcessColumn::memory), "512 MB");
    EXPECT_EQ(cell(row, ProcessColumn::inRAM), "300 MB");
    EXPECT_EQ(cell(row, ProcessColumn::compressed), "1.5 MB");
    EXPECT_EQ(cell(row, ProcessColumn::compressed, "de_DE"), "1,5 MB");
}

TEST(ProcessCell, isEmptyWhereNothingIsCompressed) {
    EXPECT_EQ(cell({}, ProcessColumn::compressed), "");
    EXPECT_EQ(cell({}, ProcessColumn::memory), "Zero KB");
}

TEST(ProcessCell, showsNoCPUBelowATwentiethOfAPercent) {
    EXPECT_EQ(cell({.cpu = 0.04}, ProcessColumn::cpu), "");
    EXPECT_NE(cell({.cpu = 0.05}, ProcessColumn::cpu), "");
    EXPECT_EQ(cell({.cpu = 0.06}, ProcessColumn::cpu), "0.1");
    EXPECT_EQ(cell({.cpu = 100}, ProcessColumn::cpu), "100.0");
    EXPECT_EQ(cell({.cpu = 1234.56}, ProcessColumn::cpu), "1,234.6");
    EXPECT_EQ(cell({.cpu = 12.5}, ProcessColumn::cpu, "ar_EG"), "١٢٫٥");
}

TEST(ProcessCell, countsTimesUpToTheMomentOfTheSample) {
    const TableRow row{.unusedSince = Date{Seconds{10'000 - 3900}}, .started = Date{Seconds{10'000 - 7200}}};
    EXPECT_EQ(cell(row, ProcessColumn::unusedFor), "1h 5m");
    EXPECT_EQ(cell(row, ProcessColumn::runningFor), "2h");
    EXPECT_EQ(cell({}, ProcessColumn::runningFor), "");
}

TEST(ProcessCell, hasThePidOfAProcessAndNoneOfAGroup) {
    const TableRow process{.pids = {12345}};
    EXPECT_EQ(cell(process, ProcessColumn::pid), "12345");
    EXPECT_EQ(cell(process, ProcessColumn::pid, "ar_EG"), "12345");
    EXPECT_EQ(cell(TableRow::group("g", "", {}, {}, {process}), ProcessColumn::pid), "");
    EXPECT_EQ(cell({}, ProcessColumn::pid), "");
}

TEST(ProcessColumns, standInOrderWithTheirTitles) {
    std::vector<std::string_view> titles;
    for (const auto& each : processColumns) titles.push_back(each.title);
    EXPECT_THAT(titles,
                ElementsAre("Name", "Memory", "In RAM", "Compressed", "% CPU", "Unused For", "Running For", "PID"));
    for (std::size_t index = 0; index < processColumns.size(); ++index) {
        EXPECT_EQ(processColumns[index].column, static_cast<ProcessColumn>(index));
    }
}

TEST(ProcessColumns, explainTwoOfThem) {
    std::vector<std::string_view> tooltips;
    for (const auto& each : processColumns) tooltips.push_back(each.tooltip);
    EXPECT_THAT(tooltips,
                ElementsAre("", "", "Memory with the compressed part counted at the current compression ratio", "",
                            "100 is one full core", "", "", ""));
}

TEST(ProcessColumns, sortByTheirFieldsButForThePid) {
    using enum RowField;
    std::vector<std::optional<RowField>> fields;
    for (const auto& each : processColumns) fields.push_back(each.sortsBy);
    EXPECT_THAT(fields, ElementsAre(title, memory, inRAM, compressed, cpu, unusedSince, age, std::nullopt));
}

TEST(SortOrder, turnsRoundAtASecondClick) {
    const auto once = ProcessesView::orderAfterClick({RowOrder{}}, RowField::memory);
    EXPECT_THAT(once, ElementsAre(RowOrder{RowField::memory, true}));
    EXPECT_THAT(ProcessesView::orderAfterClick(once, RowField::memory), ElementsAre(RowOrder{}));
}

TEST(SortOrder, startsANewColumnWithItsLargerValues) {
    const auto first = [](RowField field) { return ProcessesView::orderAfterClick({}, field).front().ascending; };
    EXPECT_FALSE(first(RowField::memory));
    EXPECT_FALSE(first(RowField::inRAM));
    EXPECT_FALSE(first(RowField::compressed));
    EXPECT_FALSE(first(RowField::cpu));
    EXPECT_TRUE(first(RowField::title));
    EXPECT_TRUE(first(RowField::unusedSince)) << "the longest unused has the earliest date";
    EXPECT_TRUE(first(RowField::age)) << "the longest running started first";
}

TEST(SortOrder, letsEarlierChoicesSettleTies) {
    auto order = ProcessesView::orderAfterClick({RowOrder{}}, RowField::title);
    EXPECT_THAT(order, ElementsAre(RowOrder{RowField::title, true}, RowOrder{RowField::memory, false}));
    order = ProcessesView::orderAfterClick(order, RowField::memory);
    EXPECT_THAT(order, ElementsAre(RowOrder{RowField::memory, false}, RowOrder{RowField::title, true}));
}

TEST(ProcessesView, labelsItsControls) {
    EXPECT_EQ(ProcessesView::groupLabel, "Group");
    EXPECT_EQ(ProcessesView::searchPrompt, "Name, command, project or PID");
    EXPECT_EQ(ProcessesView::inspectorLabel, "Inspector");
    EXPECT_EQ(ProcessesView::inspectorIcon, "sidebar.trailing");
    EXPECT_EQ(ProcessesView::noSelectionTitle, "No Selection");
    EXPECT_EQ(ProcessesView::noSelectionIcon, "cursorarrow.rays");
    EXPECT_EQ(ProcessesView::noSelectionText, "Select a process or group to see its details.");
}

TEST(ForceQuit, asksAboutOneRow) {
    const auto question = ForceQuitQuestion::of({{.title = "Slack"}}, "en_US");
    EXPECT_EQ(question.title, "Force quit Slack?");
    EXPECT_EQ(question.message, "Unsaved work in Slack will be lost.");
    EXPECT_EQ(question.action, "Force Quit");
}

TEST(ForceQuit, asksAboutSeveral) {
    const auto question = ForceQuitQuestion::of({{.title = "A"}, {.title = "B"}}, "en_US");
    EXPECT_EQ(question.title, "Force quit A and B?");
    EXPECT_EQ(question.message, "Unsaved work in any of them will be lost.");
}

TEST(ForceQuit, tellsHowManyProcessesAGroupIs) {
    const TableRow one{.title = "node", .pids = {4}};
    const TableRow group{.title = "Slack", .pids = {1, 2, 3}};
    EXPECT_EQ(ForceQuitQuestion::extent({one}, "en_US"), "");
    EXPECT_EQ(ForceQuitQuestion::extent({one, one}, "en_US"), "");
    EXPECT_EQ(ForceQuitQuestion::extent({group}, "en_US"), "3 processes");
    EXPECT_EQ(ForceQuitQuestion::extent({one, group}, "en_US"), "4 processes");
}

}  // namespace
}  // namespace tolvane
