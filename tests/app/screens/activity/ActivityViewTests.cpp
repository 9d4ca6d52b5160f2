#include "app/screens/activity/ActivityView.h"

#include <gmock/gmock.h>

#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ActivityViewTest : ModelTest {
    /// 2026-11-20 14:32 UTC.
    static constexpr Date afternoon{Seconds{816877920}};

    ActivityViewTest() { start(); }

    static ActivityEntry entry(const char* subject, bool dryRun, Date date = afternoon) {
        return {.id = UUID::random(),
                .date = date,
                .ruleName = "Idle Rails servers",
                .subject = subject,
                .outcome = dryRun ? "Would terminate" : "Terminated",
                .memory = 612 * MiB + 400 * 1024,
                .dryRun = dryRun};
    }
    std::vector<std::string> listed(const ActivityView& view) const {
        std::vector<std::string> subjects;
        for (const auto row : view.rows()) subjects.push_back((*model->activity)[row].subject.str());
        return subjects;
    }
    ActivityView view() { return {*model, "en_GB", "UTC"}; }
};

TEST_F(ActivityViewTest, listsWhatPassesTheFilterNewestFirst) {
    modelState->activity.set({entry("new", false), entry("logged", true), entry("old", false)});
    auto shown = view();
    EXPECT_EQ(shown.filter(), ActivityFilter::all);
    EXPECT_THAT(listed(shown), ElementsAre("new", "logged", "old"));
    shown.setFilter(ActivityFilter::actions);
    EXPECT_THAT(listed(shown), ElementsAre("new", "old"));
    shown.setFilter(ActivityFilter::logOnly);
    EXPECT_THAT(listed(shown), ElementsAre("logged"));
}

TEST_F(ActivityViewTest, theFilterIsRemembered) {
    view().setFilter(ActivityFilter::logOnly);
    EXPECT_EQ(std::get<std::string>(world.preferences.at("activityFilter")), "logOnly");
    EXPECT_EQ(view().filter(), ActivityFilter::logOnly);
    world.preferences["activityFilter"] = std::string("everything");
    EXPECT_EQ(view().filter(), ActivityFilter::all);
    world.preferences["activityFilter"] = true;
    EXPECT_EQ(view().filter(), ActivityFilter::all);
}

TEST_F(ActivityViewTest, hasThreeFiltersAndAWordForEachEmptyList) {
    ASSERT_EQ(activityFilters.size(), 3U);
    EXPECT_EQ(activityFilters[0].label, "All");
    EXPECT_EQ(activityFilters[0].empty,
              (EmptyText{"No Activity", "Every time a rule acts, or would act in dry run, it is listed here.",
                         "list.bullet.rectangle"}));
    EXPECT_EQ(activityFilters[1].label, "Actions");
    EXPECT_EQ(activityFilters[1].empty,
              (EmptyText{"No Actions", "No rule has acted yet. Rules in Log Only only write what they would do.",
                         "line.3.horizontal.decrease.circle"}));
    EXPECT_EQ(activityFilters[2].label, "Log Only");
    EXPECT_EQ(activityFilters[2].empty, (EmptyText{"Nothing Logged", "Rules in Log Only have not matched anything yet.",
                                                   "line.3.horizontal.decrease.circle"}));
    EXPECT_EQ(ActivityView::filterLabel, "Show");
}

TEST_F(ActivityViewTest, aLogOfDryRunsAloneHasNoActions) {
    modelState->activity.set({entry("logged", true)});
    auto shown = view();
    shown.setFilter(ActivityFilter::actions);
    EXPECT_THAT(shown.rows(), IsEmpty());
    EXPECT_TRUE(shown.canClear()) << "the log itself is not empty";
}

TEST_F(ActivityViewTest, hasFiveColumns) {
    std::vector<std::string_view> titles;
    for (const auto& column : activityColumns) titles.push_back(column.title);
    EXPECT_THAT(titles, ElementsAre("Time", "What Happened", "Process or App", "Memory", "Rule"));
    const auto one = entry("node", false);
    const auto shown = view();
    EXPECT_EQ(shown.cell(one, ActivityColumn::time), "20 Nov 2026, 14:32");
    EXPECT_EQ(shown.cell(one, ActivityColumn::whatHappened), "Terminated");
    EXPECT_EQ(shown.cell(one, ActivityColumn::subject), "node");
    EXPECT_EQ(shown.cell(one, ActivityColumn::memory), "612.4 MB");
    EXPECT_EQ(shown.cell(one, ActivityColumn::rule), "Idle Rails servers");
}

TEST_F(ActivityViewTest, onlyFiguresStandAtTheFarEdge) {
    for (const auto& column : activityColumns) EXPECT_EQ(column.trailing, column.column == ActivityColumn::memory);
}

TEST_F(ActivityViewTest, asksBeforeItClears) {
    modelState->activity.set({entry("node", false)});
    auto shown = view();
    EXPECT_EQ(ActivityView::clearLabel, "Clear Activity");
    EXPECT_EQ(shown.clearQuestion(), std::nullopt);
    shown.askToClear();
    EXPECT_EQ(shown.clearQuestion(),
              (Question{"Clear the activity log?", "Stats are counted from this log, so they start again from zero.",
                        "Clear Activity"}));
    shown.cancelClear();
    EXPECT_EQ(shown.clearQuestion(), std::nullopt);
    EXPECT_EQ(model->activity->size(), 1U);
}

TEST_F(ActivityViewTest, clearingEmptiesTheListAndTheFile) {
    model->store().append(entry("node", false));
    modelState->activity.set(model->store().loadActivity(10));
    ASSERT_EQ(model->activity->size(), 1U);
    auto shown = view();
    shown.askToClear();
    shown.confirmClear();
    EXPECT_THAT(*model->activity, IsEmpty());
    EXPECT_THAT(model->store().loadActivity(10), IsEmpty());
    EXPECT_EQ(shown.clearQuestion(), std::nullopt);
}

TEST_F(ActivityViewTest, thereIsNothingToAskAboutAnEmptyLog) {
    auto shown = view();
    EXPECT_FALSE(shown.canClear());
    shown.askToClear();
    EXPECT_EQ(shown.clearQuestion(), std::nullopt);
}

}  // namespace
}  // namespace tolvane
