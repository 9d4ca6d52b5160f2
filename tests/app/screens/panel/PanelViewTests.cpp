#include <gmock/gmock.h>

#include "app/screens/panel/PanelView.h"
#include "app/screens/panel/TrayLabel.h"
#include "tests/app/ModelTest.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using MenuBarTest = ModelTest;

TEST(TrayLabel, tellsWhenMemoryIsTight) {
    EXPECT_EQ(TrayLabel::of(false), (TrayLabel{"memorychip", "Tolvane"}));
    EXPECT_EQ(TrayLabel::of(true), (TrayLabel{"memorychip.fill", "Tolvane, memory is tight"}));
}

TableRow line(const char* title, std::uint64_t memory, double cpu = 0) {
    return {.id = title, .title = title, .memory = memory, .cpu = cpu, .unusedSince = Date{Seconds{-300}}};
}

TEST(PanelView, listsTheSevenLargest) {
    std::vector<TableRow> lines;
    for (const auto* title : {"a", "b", "c", "d", "e", "f", "g", "h"}) lines.push_back(line(title, 10));
    lines[7].memory = 20;
    const auto rows = PanelView::largestOf(lines, Date{}, "en_US");
    ASSERT_THAT(rows, SizeIs(7));
    EXPECT_EQ(rows[0], (PanelLine{std::nullopt, "h", "5m", "20 bytes"}));
    EXPECT_EQ(rows[1].title, "a") << "equal ones keep their order";
    EXPECT_EQ(rows[6].title, "f");
    EXPECT_THAT(PanelView::largestOf({line("only", 1)}, Date{}, "en_US"), SizeIs(1));
    EXPECT_THAT(PanelView::largestOf({}, Date{}, "en_US"), IsEmpty());
}

TEST(PanelView, theFirstOfEqualsIsTheBusiest) {
    EXPECT_EQ(PanelView::busiestOf({line("a", 1, 5), line("b", 1, 9), line("c", 1, 9)})->title, "b");
    EXPECT_EQ(PanelView::busiestOf({}), std::nullopt);
}

TEST(PanelView, showsThreeSuggestions) {
    using Kind = Suggestion::Kind;
    const std::vector<Suggestion> four{{.kind = Kind::growing, .title = "a", .memory = 1024},
                                       {.kind = Kind::busy, .title = "b", .appPath = "/b.app", .cpu = 150},
                                       {.title = "c"},
                                       {.title = "d"}};
    const auto rows = PanelView::suggestionsOf(four, "en_US");
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_EQ(rows[0], (PanelSuggestion{std::nullopt, "a", "Growing steadily", "1 KB"}));
    EXPECT_EQ(rows[1], (PanelSuggestion{"/b.app", "b", "Keeping the CPU busy", "1.5 cores"}));
}

TEST(PanelView, namesAllSuggestionsFromFourOn) {
    EXPECT_EQ(PanelView::showSuggestionsLabel(1), "Show");
    EXPECT_EQ(PanelView::showSuggestionsLabel(3), "Show");
    EXPECT_EQ(PanelView::showSuggestionsLabel(4), "Show All 4 Suggestions");
}

TEST(PanelView, hasATagForEachKind) {
    using Kind = Suggestion::Kind;
    EXPECT_EQ(PanelView::tagOf(Kind::simulator), "Simulator left booted");
    EXPECT_EQ(PanelView::tagOf(Kind::leftRunning), "Left running");
    EXPECT_EQ(PanelView::tagOf(Kind::growing), "Growing steadily");
    EXPECT_EQ(PanelView::tagOf(Kind::duplicate), "Running twice");
    EXPECT_EQ(PanelView::tagOf(Kind::busy), "Keeping the CPU busy");
    EXPECT_EQ(PanelView::tagOf(Kind::idle), "Idle");
}

TEST(PanelView, tellsTheLatestAct) {
    const ActivityEntry entry{.subject = "node", .outcome = "Terminated"};
    EXPECT_EQ(PanelView::activityOf(entry, Date{Seconds{540}}, "en_US"),
              (PanelActivity{"Terminated: node", "9 minutes ago"}));
    EXPECT_EQ(PanelView::activityOf(entry, Date{Seconds{86400}}, "en_US").when, "yesterday");
}

TEST(PanelView, hasItsWords) {
    EXPECT_EQ(PanelView::width, 340);
    EXPECT_EQ(PanelView::columnWidth, 64);
    EXPECT_EQ(PanelView::largestTitle, "Largest right now");
    EXPECT_EQ(PanelView::unusedColumn, "Unused");
    EXPECT_EQ(PanelView::memoryColumn, "Memory");
    EXPECT_EQ(PanelView::unusedTooltip, "Unused for");
    EXPECT_EQ(PanelView::processIcon, "terminal");
    EXPECT_EQ(PanelView::suggestionsTitle, "Suggestions");
    EXPECT_EQ(PanelView::activityCaption, "Last rule activity");
    EXPECT_EQ(PanelView::openLabel, "Open Tolvane");
    EXPECT_EQ(PanelView::pauseLabel, "Pause rules");
    EXPECT_EQ(PanelView::settingsLabel, "Settings");
    EXPECT_EQ(PanelView::settingsIcon, "gearshape");
    EXPECT_EQ(PanelView::quitLabel, "Quit Tolvane");
    EXPECT_EQ(PanelView::quitIcon, "power");
}

TEST_F(MenuBarTest, readsTheModel) {
    startStill();
    modelState->suggestions.set({});
    modelState->activity.set({});
    modelState->snapshot.set({.memory = {.total = 16 * GiB, .app = 8 * GiB},
                              .cpu = {.user = 0.5, .cores = 4},
                              .rows = {fakes::row(12, "node")}});
    modelState->swapGrowth.set(std::int64_t{67108863});
    const auto panel = PanelView::of(*model, "en_US");
    EXPECT_EQ(panel.memory, MemorySummary::of(model->snapshot->memory, *model->swapGrowth, {}, "en_US"));
    EXPECT_EQ(panel.cpu.busyNow, "2.0 of 4 cores busy now");
    EXPECT_EQ(panel.cpu.rows.back().label, "Busiest");
    ASSERT_THAT(panel.largest, SizeIs(1));
    EXPECT_EQ(panel.largest[0].title, "node");
    EXPECT_THAT(panel.suggestions, IsEmpty());
    EXPECT_EQ(panel.lastActivity, std::nullopt);
    EXPECT_FALSE(panel.rulesPaused);
}

TEST_F(MenuBarTest, aMachineWithoutProcessesHasNobodyBusiest) {
    startStill();
    modelState->snapshot.set({.cpu = {.cores = 4}});
    for (const auto& row : PanelView::of(*model, "en_US").cpu.rows) EXPECT_NE(row.label, "Busiest");
}

TEST_F(MenuBarTest, showsTheNewestEntryOfTheLog) {
    startStill();
    modelState->activity.set({{.date = clock.now() - Seconds{60}, .subject = "new", .outcome = "Quit"},
                              {.date = clock.now(), .subject = "old", .outcome = "Quit"}});
    model->pauseRules(true);
    const auto panel = PanelView::of(*model, "en_US");
    EXPECT_EQ(panel.lastActivity, (PanelActivity{"Quit: new", "1 minute ago"}));
    EXPECT_TRUE(panel.rulesPaused);
}

TEST_F(MenuBarTest, opensTheWindowAsItIsOrWithTheSuggestions) {
    startStill();
    model->show(AppSection::stats);
    const int before = *model->windowRequest;
    PanelView::openMainWindow(*model);
    EXPECT_EQ(*model->windowRequest, before + 1);
    EXPECT_EQ(*model->section, AppSection::stats);
    PanelView::openSuggestions(*model);
    EXPECT_EQ(*model->windowRequest, before + 2);
    EXPECT_EQ(*model->section, AppSection::suggestions);
}

}  // namespace
}  // namespace tolvane
