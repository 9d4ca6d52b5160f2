#include "app/screens/processes/ProcessesView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/screens/processes/SystemStrip.h"
#include "app/screens/window/MainView.h"
#include "tests/app/ModelTest.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A model that takes no samples, with an application of two processes and a process outside applications.
struct ProcessesViewTest : ModelTest {
    ProcessesViewTest() {
        world.displayNames["/Applications/Slack.app"] = "Slack.app";
        startStill();
        modelState->snapshot.set(
            {.date = Date{Seconds{800'000'000}},
             .rows = {fakes::row(7, "node", 200 * MiB), fakes::appRow(8, "Slack", "/Applications/Slack.app", 300 * MiB),
                      fakes::appRow(9, "Slack Helper", "/Applications/Slack.app", 100 * MiB)}});
    }

    ProcessesView view() { return {*model, "en_US"}; }
};

std::vector<std::string> ids(const std::vector<TableRow>& rows) {
    std::vector<std::string> ids;
    for (const auto& row : rows) ids.push_back(row.id);
    return ids;
}

TEST_F(ProcessesViewTest, beginsByAppWithTheLargestFirst) {
    const auto table = view();
    EXPECT_EQ(table.grouping(), Grouping::apps);
    EXPECT_EQ(table.search(), "");
    EXPECT_THAT(table.sortOrder(), ElementsAre(RowOrder{RowField::memory, false}));
    EXPECT_TRUE(table.showInspector);
    EXPECT_EQ(table.forceQuitQuestion(), std::nullopt);
    const auto rows = table.rows();
    EXPECT_THAT(ids(rows), ElementsAre("/Applications/Slack.app", "pid:7"));
    EXPECT_EQ(rows[0].title, "Slack");
}

TEST_F(ProcessesViewTest, remembersItsGrouping) {
    view().setGrouping(Grouping::projects);
    EXPECT_EQ(world.preferences.at("grouping"), PreferenceValue(std::string("projects")));
    EXPECT_EQ(view().grouping(), Grouping::projects);
}

TEST_F(ProcessesViewTest, takesAStoredGroupingThatItDoesNotKnowForNone) {
    world.preferences["grouping"] = std::string("planets");
    EXPECT_EQ(view().grouping(), Grouping::apps);
    world.preferences["grouping"] = true;
    EXPECT_EQ(view().grouping(), Grouping::apps);
    world.preferences["grouping"] = std::string("all");
    EXPECT_EQ(view().grouping(), Grouping::all);
}

TEST_F(ProcessesViewTest, showsTheModelsLatestSample) {
    auto table = view();
    table.setGrouping(Grouping::all);
    table.setSearch("SLACK");
    EXPECT_THAT(ids(table.rows()), ElementsAre("pid:8", "pid:9"));
    modelState->snapshot.set({.rows = {fakes::row(1, "slackware")}});
    EXPECT_THAT(ids(table.rows()), ElementsAre("pid:1"));
}

TEST_F(ProcessesViewTest, sortsByAClickedColumn) {
    auto table = view();
    table.sortBy(RowField::title);
    EXPECT_THAT(ids(table.rows()), ElementsAre("/Applications/Slack.app", "pid:7"));
    table.sortBy(RowField::title);
    EXPECT_THAT(ids(table.rows()), ElementsAre("pid:7", "/Applications/Slack.app"));
    table.setSortOrder({{RowField::memory, true}});
    EXPECT_THAT(ids(table.rows()), ElementsAre("pid:7", "/Applications/Slack.app"));
}

TEST_F(ProcessesViewTest, countsTimesUpToTheSample) {
    const auto table = view();
    EXPECT_EQ(table.cell({.started = Date{Seconds{800'000'000 - 3600}}}, ProcessColumn::runningFor), "1h");
}

TEST_F(ProcessesViewTest, keepsASelectionThatTheSearchHides) {
    auto table = view();
    model->selectRows({"pid:7", "gone"});
    EXPECT_THAT(ids(table.selected(table.rows())), ElementsAre("pid:7"));
    table.setSearch("nothing like it");
    EXPECT_THAT(table.rows(), IsEmpty());
    EXPECT_THAT(table.selected(table.rows()), IsEmpty());
    EXPECT_EQ(*model->selectedRows, (std::set<std::string>{"pid:7", "gone"}));
}

TEST_F(ProcessesViewTest, asksBeforeItForceQuits) {
    auto table = view();
    model->selectRows({"pid:7"});
    table.askForceQuit({"pid:7", "/Applications/Slack.app"}, table.rows());
    ASSERT_TRUE(table.forceQuitQuestion());
    EXPECT_EQ(table.forceQuitQuestion()->title, "Force quit Slack and node?");
    EXPECT_THAT(ids(table.confirmForceQuit()), ElementsAre("/Applications/Slack.app", "pid:7"));
    EXPECT_EQ(table.forceQuitQuestion(), std::nullopt);
    EXPECT_THAT(*model->selectedRows, IsEmpty());
}

TEST_F(ProcessesViewTest, doesNothingWhenTheUserThinksBetter) {
    auto table = view();
    model->selectRows({"pid:7"});
    table.askForceQuit({"pid:7"}, table.rows());
    table.cancelForceQuit();
    EXPECT_EQ(table.forceQuitQuestion(), std::nullopt);
    EXPECT_THAT(*model->selectedRows, ElementsAre("pid:7"));
}

TEST_F(ProcessesViewTest, asksNothingAboutRowsThatAreGone) {
    auto table = view();
    table.askForceQuit({"gone"}, table.rows());
    EXPECT_EQ(table.forceQuitQuestion(), std::nullopt);
}

TEST_F(ProcessesViewTest, hasTheStripOfTheModelsFigures) {
    modelState->swapGrowth.set(64 * static_cast<std::int64_t>(MiB));
    modelState->readBack.set(64 * MiB);
    modelState->loadHistory.set({{}, {}});
    const auto strip = SystemStrip::of(*model, "en_US");
    EXPECT_EQ(strip.memory.rows.size(), 4U);
    EXPECT_EQ(strip.cpu.chart.size(), 2U);
}

TEST_F(ProcessesViewTest, hasASidebarOfTheModelsCounts) {
    modelState->rules.set({{.enabled = true}, {.enabled = false}});
    modelState->suggestions.set({{.id = "a"}, {.id = "b"}, {.id = "c"}});
    modelState->hiddenSuggestions.set({{"a", distantFuture}});
    const std::vector sections{AppSection::suggestions, AppSection::rules};
    const auto groups = MainView::sidebar(*model, sections);
    EXPECT_EQ(groups[0].rows[0].badge, "2");
    EXPECT_EQ(groups[1].rows[0].badge, "1");
}

}  // namespace
}  // namespace tolvane
