#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/screens/processes/InspectorContent.h"
#include "app/screens/processes/SelectionInspector.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using fakes::MiB;
using fakes::row;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Date now = dateFromUnixSeconds(1795091760);

/// A dev server in a project, its parent, and the known facts about both.
class InspectorTest : public ::testing::Test {
protected:
    InspectorTest() {
        auto shell = row(100, "zsh");
        auto server = row(4711, "node", 300 * MiB);
        server.sample.ppid = 100;
        server.sample.startTime = now - Seconds{7200};
        server.sample.peakFootprint = 400 * MiB;
        server.sample.compressed = 50 * MiB;
        server.sample.args = {"node", "server.js"};
        server.unusedSince = now - Seconds{3900};
        server.cpuPercent = 12.34;
        server.perfPercent = 10;
        snapshot = {.date = now, .rows = {shell, server}};
    }

    ProcRow& server() { return snapshot.rows[1]; }
    TableRow process() const { return TableRow::build(snapshot.rows, Grouping::all, 1, RowNames{})[1]; }
    TableRow app() const {
        auto tableRow = process();
        tableRow.title = "Slack";
        tableRow.appPath = "/Applications/Slack.app";
        return tableRow;
    }
    TableRow group() const {
        return TableRow::group("cmd:node", "node", "2 processes", {},
                               TableRow::build(snapshot.rows, Grouping::all, 1, {}));
    }

    InspectorContent of(const TableRow& tableRow) const {
        return InspectorContent::of(tableRow, {.snapshot = snapshot,
                                               .history = history,
                                               .lowered = lowered,
                                               .ports = ports,
                                               .home = "/home/ada",
                                               .actor = {.pid = 99, .uid = 501},
                                               .locale = "en_US",
                                               .zone = "UTC"});
    }

    Snapshot snapshot;
    std::vector<HistoryPoint> history;
    std::map<Pid, Lowered> lowered;
    std::vector<int> ports;
};

std::vector<std::string> labels(const std::vector<ValueRow>& rows) {
    std::vector<std::string> labels;
    for (const auto& each : rows) labels.push_back(each.label);
    return labels;
}

const ValueRow& named(const std::vector<ValueRow>& rows, std::string_view label) {
    static const ValueRow none{.value = "no such row"};
    const auto found = std::ranges::find(rows, label, &ValueRow::label);
    return found == rows.end() ? none : *found;
}

std::vector<std::string> titles(const std::vector<InspectorButton>& buttons) {
    std::vector<std::string> titles;
    for (const auto& each : buttons) titles.push_back(each.title);
    return titles;
}

TEST_F(InspectorTest, listsTheFiguresOfAProcess) {
    const auto figures = of(process()).figures;
    ASSERT_THAT(labels(figures), ElementsAre("Memory", "Peak", "Compressed", "CPU", "Unused for", "Started"));
    EXPECT_EQ(named(figures, "Memory").value, "300 MB");
    EXPECT_EQ(named(figures, "Peak").value, "400 MB");
    EXPECT_EQ(named(figures, "Compressed").value, "50 MB");
    EXPECT_EQ(named(figures, "CPU").value, "12.3 %");
    EXPECT_EQ(named(figures, "Unused for").value, "1h 5m");
    EXPECT_EQ(named(figures, "Started").value, "Nov 19, 2026, 10:36\u202fAM");
}

TEST_F(InspectorTest, explainsItsFigures) {
    const auto figures = of(process()).figures;
    EXPECT_EQ(named(figures, "Memory").tooltip,
              "Physical footprint, the Memory column in Activity Monitor: everything the process wrote to, including "
              "what is compressed or in swap.");
    EXPECT_EQ(named(figures, "Peak").tooltip, "The largest footprint since the process started.");
    EXPECT_EQ(named(figures, "Compressed").tooltip, "The part of Memory that macOS compressed or moved to swap.");
}

TEST_F(InspectorTest, tellsThePerformanceCoresApartWhereThereAreTwoKinds) {
    EXPECT_EQ(named(of(process()).figures, "On performance cores").value, "no such row");
    snapshot.cpu.efficiencyCores = 4;
    EXPECT_EQ(named(of(process()).figures, "On performance cores").value, "10.0 %");
    EXPECT_EQ(named(of(group()).figures, "On performance cores").value, "no such row");
}

TEST_F(InspectorTest, listsTheFiguresOfAGroup) {
    const auto content = of(group());
    ASSERT_THAT(labels(content.figures),
                ElementsAre("Memory", "Compressed", "CPU", "Unused for", "Started", "Processes"));
    EXPECT_EQ(named(content.figures, "Memory").value, "301 MB");
    EXPECT_EQ(named(content.figures, "Processes").value, "2");
    EXPECT_THAT(content.process, IsEmpty());
}

TEST_F(InspectorTest, keepsTheTitleAndTheIconOfItsRow) {
    const auto content = of(app());
    EXPECT_EQ(content.title, "Slack");
    EXPECT_EQ(content.appPath, "/Applications/Slack.app");
    EXPECT_EQ(of(group()).detail, "2 processes");
}

TEST_F(InspectorTest, describesAProcess) {
    const auto content = of(process());
    EXPECT_EQ(content.processHeading, "Process");
    ASSERT_THAT(labels(content.process), ElementsAre("PID", "Parent", "Command"));
    EXPECT_EQ(named(content.process, "PID").value, "4711");
    EXPECT_EQ(named(content.process, "Parent").value, "zsh (100)");
    EXPECT_EQ(named(content.process, "Command").value, "node server.js");
}

TEST_F(InspectorTest, saysWhereAProcessBelongsWhenThatIsKnown) {
    server().claudeSession = Text("fix login");
    server().project = Text("/home/ada/shop");
    server().sample.cwd = Text("/home/ada/shop/web");
    ports = {3000, 8080};
    const auto rows = of(process()).process;
    ASSERT_THAT(labels(rows),
                ElementsAre("PID", "Parent", "Claude session", "Project", "Working folder", "Listening on", "Command"));
    EXPECT_EQ(named(rows, "Claude session").value, "fix login");
    EXPECT_EQ(named(rows, "Project").value, "~/shop");
    EXPECT_EQ(named(rows, "Project").tooltip, "/home/ada/shop");
    EXPECT_EQ(named(rows, "Working folder").value, "~/shop/web");
    EXPECT_EQ(named(rows, "Listening on").value, "3000, 8080");
}

TEST_F(InspectorTest, numbersAParentThatCannotBeSeen) {
    server().sample.ppid = 1;
    EXPECT_EQ(named(of(process()).process, "Parent").value, "1");
}

TEST_F(InspectorTest, ofAProcessThatIsGoneHasItsLastFigures) {
    const auto tableRow = process();
    snapshot.rows.clear();
    const auto content = of(tableRow);
    ASSERT_THAT(labels(content.figures), ElementsAre("Memory", "Compressed", "CPU", "Unused for", "Started"));
    EXPECT_THAT(content.process, IsEmpty());
    EXPECT_THAT(titles(content.buttons), ElementsAre("Terminate", "Force Quit"));
    EXPECT_FALSE(content.buttons[0].enabled);
}

TEST_F(InspectorTest, drawsNothingWithoutHistory) {
    EXPECT_EQ(of(process()).memoryChart, std::nullopt);
    EXPECT_EQ(of(process()).cpuChart, std::nullopt);
}

TEST_F(InspectorTest, drawsMemoryOverTime) {
    history = {{.date = now - Seconds{1800}, .footprint = 100 * MiB, .compressed = 10 * MiB, .cpu = 5},
               {.date = now, .footprint = 150 * MiB, .compressed = 0, .cpu = 50}};
    const auto chart = of(process()).memoryChart;
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->title, "Memory over time");
    EXPECT_EQ(chart->xLabel, "Time");
    EXPECT_EQ(chart->yLabel, "Memory");
    EXPECT_EQ(chart->unit, "MB");
    EXPECT_EQ(chart->seriesLabel, "Kind");
    EXPECT_THAT(chart->dates, ElementsAre(now - Seconds{1800}, now));
    EXPECT_THAT(chart->series,
                ElementsAre(InspectorSeries{"Memory", {100, 150}}, InspectorSeries{"Compressed", {10, 0}}));
    EXPECT_EQ(chart->accessibleText, "Memory of node over the last 30 min");
}

TEST_F(InspectorTest, drawsCPUOverTime) {
    history = {{.date = now - Seconds{5400}, .cpu = 5}, {.date = now, .cpu = 50}};
    const auto chart = of(group()).cpuChart;
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->title, "CPU over time");
    EXPECT_EQ(chart->xLabel, "Time");
    EXPECT_EQ(chart->yLabel, "CPU");
    EXPECT_EQ(chart->unit, "%");
    EXPECT_THAT(chart->series, ElementsAre(InspectorSeries{"CPU", {5, 50}}));
    EXPECT_EQ(chart->accessibleText, "CPU of node over the last 1 hr, 30 min");
}

TEST_F(InspectorTest, speaksOfAMinuteAtLeast) {
    history = {{.date = now}};
    EXPECT_EQ(of(process()).cpuChart->accessibleText, "CPU of node over the last 1 min");
}

TEST_F(InspectorTest, offersToLowerAProcess) {
    const auto buttons = of(process()).buttons;
    ASSERT_THAT(titles(buttons), ElementsAre("Lower Priority", "Terminate", "Force Quit"));
    EXPECT_EQ(buttons[0].action, ProcessAction::lowerPriority);
    EXPECT_EQ(
        buttons[0].tooltip,
        "Runs it at background priority until it is used again. Pages it touches from then on are the first macOS "
        "takes back.");
    EXPECT_EQ(buttons[1].action, ProcessAction::terminate);
    EXPECT_EQ(buttons[2].action, ProcessAction::forceQuit);
    EXPECT_EQ(buttons[2].shortcut, 'f');
}

TEST_F(InspectorTest, offersToGiveAPriorityBack) {
    lowered[4711] = {.start = server().sample.startTime, .at = now};
    const auto buttons = of(process()).buttons;
    ASSERT_THAT(titles(buttons), ElementsAre("Restore Priority", "Terminate", "Force Quit"));
    EXPECT_EQ(buttons[0].action, ProcessAction::restorePriority);
    EXPECT_EQ(buttons[0].tooltip, "");
}

TEST_F(InspectorTest, offersToQuitAndRelaunchAnApp) {
    const auto buttons = of(app()).buttons;
    ASSERT_THAT(titles(buttons), ElementsAre("Lower Priority", "Quit", "Relaunch", "Force Quit"));
    EXPECT_EQ(buttons[1].action, ProcessAction::quit);
    EXPECT_EQ(buttons[1].shortcut, 'q');
    EXPECT_EQ(buttons[2].action, ProcessAction::relaunch);
    EXPECT_EQ(buttons[2].shortcut, std::nullopt);
}

TEST_F(InspectorTest, offersAGroupNoPriority) {
    EXPECT_THAT(titles(of(group()).buttons), ElementsAre("Terminate", "Force Quit"));
}

TEST_F(InspectorTest, enablesItsButtonsForTheUsersOwnProcesses) {
    for (const auto& button : of(process()).buttons) EXPECT_TRUE(button.enabled) << button.title;
    server().sample.uid = 0;
    for (const auto& button : of(process()).buttons) EXPECT_FALSE(button.enabled) << button.title;
    for (const auto& button : of(group()).buttons) EXPECT_TRUE(button.enabled) << "one of two is the user's";
}

TEST_F(InspectorTest, neverActsOnThisProgram) {
    server().sample.pid = 99;
    for (const auto& button : of(process()).buttons) EXPECT_FALSE(button.enabled) << button.title;
}

TEST_F(InspectorTest, speaksTheNumbersOfTheLocale) {
    const auto content = InspectorContent::of(process(), {.snapshot = snapshot,
                                                          .history = history,
                                                          .lowered = lowered,
                                                          .ports = ports,
                                                          .locale = "de_DE",
                                                          .zone = "Europe/Berlin"});
    EXPECT_EQ(named(content.figures, "CPU").value, "12,3 %");
    EXPECT_EQ(named(content.figures, "Started").value, "19.11.2026, 11:36");
}

TEST(SelectionInspector, sumsTheRows) {
    const std::vector<TableRow> tableRows{
        {.id = "pid:1", .title = "big", .pids = {1}, .memory = 300 * MiB, .cpu = 10.5},
        TableRow::group("g", "group", {}, {},
                        {{.id = "pid:2", .pids = {2}, .memory = 100 * MiB}, {.id = "pid:3", .pids = {3}, .cpu = 2}})};
    const auto inspector = SelectionInspector::of(tableRows, "en_US");
    EXPECT_EQ(inspector.title, "2 selected");
    EXPECT_EQ(inspector.forceQuit.title, "Force Quit 2 Items…");
    EXPECT_EQ(inspector.forceQuit.action, ProcessAction::forceQuit);
    EXPECT_EQ(inspector.forceQuit.shortcut, 'q');
    ASSERT_THAT(labels(inspector.figures), ElementsAre("Memory", "CPU", "Processes"));
    EXPECT_EQ(inspector.figures[0].value, "400 MB");
    EXPECT_EQ(inspector.figures[1].value, "12.5 %");
    EXPECT_EQ(inspector.figures[2].value, "3");
    ASSERT_THAT(labels(inspector.lines), ElementsAre("big", "group"));
    EXPECT_EQ(inspector.lines[0].value, "300 MB");
    EXPECT_EQ(inspector.lines[1].value, "100 MB");
}

TEST(SelectionInspector, countsAProcessWithinASelectedGroupOnce) {
    const TableRow child{.id = "pid:2", .title = "child", .pids = {2}, .memory = 100 * MiB, .cpu = 2};
    const auto group = TableRow::group("g", "group", {}, {}, {child, {.id = "pid:3", .pids = {3}, .memory = MiB}});
    const auto inspector = SelectionInspector::of({group, child}, "en_US");
    EXPECT_EQ(inspector.title, "2 selected");
    EXPECT_EQ(inspector.figures[0].value, "101 MB");
    EXPECT_EQ(inspector.figures[1].value, "2.0 %");
    EXPECT_EQ(inspector.figures[2].value, "2");
    EXPECT_EQ(inspector.lines.size(), 2U);
}

}  // namespace
}  // namespace tolvane
