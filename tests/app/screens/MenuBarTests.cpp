#include <gmock/gmock.h>

#include "app/screens/MenuBarLabel.h"
#include "app/screens/MenuBarPanel.h"
#include "tests/app/ModelTest.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using MenuBarTest = ModelTest;

TEST(MenuBarLabel, tellsWhenMemoryIsTight) {
    EXPECT_EQ(MenuBarLabel::of(false), (MenuBarLabel{"memorychip", "Tolvane"}));
    EXPECT_EQ(MenuBarLabel::of(true), (MenuBarLabel{"memorychip.fill", "Tolvane, memory is tight"}));
}

Line line(const char* title, std::uint64_t memory, double cpu = 0) {
    return {.id = title, .title = title, .memory = memory, .cpu = cpu, .unusedSince = Date{Seconds{-300}}};
}

TEST(MenuBarPanel, listsTheSevenLargest) {
    std::vector<Line> lines;
    for (const auto* title : {"a", "b", "c", "d", "e", "f", "g", "h"}) lines.push_back(line(title, 10));
    lines[7].memory = 20;
    const auto rows = MenuBarPanel::largestOf(lines, Date{}, "en_US");
    ASSERT_THAT(rows, SizeIs(7));
    EXPECT_EQ(rows[0], (PanelLine{std::nullopt, "h", "5m", "20 bytes"}));
    EXPECT_EQ(rows[1].title, "a") << "equal ones keep their order";
    EXPECT_EQ(rows[6].title, "f");
    EXPECT_THAT(MenuBarPanel::largestOf({line("only", 1)}, Date{}, "en_US"), SizeIs(1));
    EXPECT_THAT(MenuBarPanel::largestOf({}, Date{}, "en_US"), IsEmpty());
}

TEST(MenuBarPanel, theFirstOfEqualsIsTheBusiest) {
    EXPECT_EQ(MenuBarPanel::busiestOf({line("a", 1, 5), line("b", 1, 9), line("c", 1, 9)})->title, "b");
    EXPECT_EQ(MenuBarPanel::busiestOf({}), std::nullopt);
}

TEST(MenuBarPanel, showsThreeSuggestions) {
    using Kind = Suggestion::Kind;
    const std::vector<Suggestion> four{{.kind = Kind::growing, .title = "a", .memory = 1024},
                                       {.kind = Kind::busy, .title = "b", .bundlePath = "/b.app", .cpu = 150},
                                       {.title = "c"},
                                       {.title = "d"}};
    const auto rows = MenuBarPanel::suggestionsOf(four, "en_US");
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_EQ(rows[0], (PanelSuggestion{std::nullopt, "a", "Growing steadily", "1 KB"}));
    EXPECT_EQ(rows[1], (PanelSuggestion{"/b.app", "b", "Keeping the CPU busy", "1.5 cores"}));
}

TEST(MenuBarPanel, namesAllSuggestionsFromFourOn) {
    EXPECT_EQ(MenuBarPanel::showSuggestionsLabel(1), "Show");
    EXPECT_EQ(MenuBarPanel::showSuggestionsLabel(3), "Show");
    EXPECT_EQ(MenuBarPanel::showSuggestionsLabel(4), "Show All 4 Suggestions");
}

TEST(MenuBarPanel, hasATagForEachKind) {
    using Kind = Suggestion::Kind;
    EXPECT_EQ(MenuBarPanel::tagOf(Kind::simulator), "Simulator left booted");
    EXPECT_EQ(MenuBarPanel::tagOf(Kind::leftRunning), "Left running");
    EXPECT_EQ(MenuBarPanel::tagOf(Kind::growing), "Growing steadily");
    EXPECT_EQ(MenuBarPanel::tagOf(Kind::duplicate), "Running twice");
    EXPECT_EQ(MenuBarPanel::tagOf(Kind::busy), "Keeping the CPU busy");
    EXPECT_EQ(MenuBarPanel::tagOf(Kind::idle), "Idle");
}

TEST(MenuBarPanel, tellsTheLatestAct) {
    const ActivityEntry entry{.subject = "node", .outcome = "Terminated"};
    EXPECT_EQ(MenuBarPanel::activityOf(entry, Date{Seconds{540}}, "en_US"),
              (PanelActivity{"Terminated: node", "9 minutes ago"}));
    EXPECT_EQ(MenuBarPanel::activityOf(entry, Date{Seconds{86400}}, "en_US").when, "yesterday");
}

TEST(MenuBarPanel, hasItsWords) {
    EXPECT_EQ(MenuBarPanel::width, 340);
    EXPECT_EQ(MenuBarPanel::columnWidth, 64);
    EXPECT_EQ(MenuBarPanel::largestTitle, "Largest right now");
    EXPECT_EQ(MenuBarPanel::unusedColumn, "Unused");
    EXPECT_EQ(MenuBarPanel::memoryColumn, "Memory");
    EXPECT_EQ(MenuBarPanel::unusedTooltip, "Unused for");
    EXPECT_EQ(MenuBarPanel::processIcon, "terminal");
    EXPECT_EQ(MenuBarPanel::suggestionsTitle, "Suggestions");
    EXPECT_EQ(MenuBarPanel::activityCaption, "Last rule activity");
    EXPECT_EQ(MenuBarPanel::openLabel, "Open Tolvane");
    EXPECT_EQ(MenuBarPanel::pauseLabel, "Pause rules");
    EXPECT_EQ(MenuBarPanel::settingsLabel, "Settings");
    EXPECT_EQ(MenuBarPanel::settingsIcon, "gearshape");
    EXPECT_EQ(MenuBarPanel::quitLabel, "Quit Tolvane");
    EXPECT_EQ(MenuBarPanel::quitIcon, "power");
}

TEST_F(MenuBarTest, readsTheModel) {
    startStill();
    model->suggestions.set({});
    model->activity.set({});
    model->snapshot.set({.memory = {.total = 16 * GiB, .app = 8 * GiB},
                         .cpu = {.user = 0.5, .cores = 4},
                         .rows = {fakes::row(12, "node")}});
    model->swapGrowth.set(std::int64_t{67108863});
    const auto panel = MenuBarPanel::of(*model, "en_US");
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
    model->snapshot.set({.cpu = {.cores = 4}});
    for (const auto& row : MenuBarPanel::of(*model, "en_US").cpu.rows) EXPECT_NE(row.label, "Busiest");
}

TEST_F(MenuBarTest, showsTheNewestEntryOfTheLog) {
    startStill();
    model->activity.set({{.date = clock.now() - Seconds{60}, .subject = "new", .outcome = "Quit"},
                         {.date = clock.now(), .subject = "old", .outcome = "Quit"}});
    model->rulesPaused.set(true);
    const auto panel = MenuBarPanel::of(*model, "en_US");
    EXPECT_EQ(panel.lastActivity, (PanelActivity{"Quit: new", "1 minute ago"}));
    EXPECT_TRUE(panel.rulesPaused);
}

TEST_F(MenuBarTest, opensTheWindowAsItIsOrWithTheSuggestions) {
    startStill();
    model->section.set(AppSection::stats);
    const int before = *model->windowRequest;
    MenuBarPanel::openMainWindow(*model);
    EXPECT_EQ(*model->windowRequest, before + 1);
    EXPECT_EQ(*model->section, AppSection::stats);
    MenuBarPanel::openSuggestions(*model);
    EXPECT_EQ(*model->windowRequest, before + 2);
    EXPECT_EQ(*model->section, AppSection::suggestions);
}

}  // namespace
}  // namespace tolvane
