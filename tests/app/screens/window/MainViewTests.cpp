#include "app/screens/window/MainView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::array everySection = {AppSection::processes, AppSection::projects, AppSection::suggestions,
                                     AppSection::history,   AppSection::stats,    AppSection::rules,
                                     AppSection::activity};

TEST(MainView, hasThreeGroupsOfSections) {
    const auto groups = MainView::sidebar(everySection, 0, 0);
    const std::vector<SidebarGroup> expected{{"Now",
                                              {{AppSection::processes, "Processes", "memorychip", ""},
                                               {AppSection::projects, "Projects", "folder", ""},
                                               {AppSection::suggestions, "Suggestions", "lightbulb", ""}}},
                                             {"Over Time",
                                              {{AppSection::history, "History", "clock.arrow.circlepath", ""},
                                               {AppSection::stats, "Stats", "chart.bar", ""}}},
                                             {"Automation",
                                              {{AppSection::rules, "Rules", "slider.horizontal.3", ""},
                                               {AppSection::activity, "Activity", "list.bullet.rectangle", ""}}}};
    EXPECT_EQ(groups, expected);
    EXPECT_EQ(MainView::title, "Tolvane");
}

TEST(MainView, countsOnTwoBadges) {
    const auto groups = MainView::sidebar(everySection, 5, 12);
    EXPECT_EQ(groups[0].rows[2].badge, "12");
    EXPECT_EQ(groups[2].rows[0].badge, "5");
    EXPECT_EQ(groups[0].rows[0].badge, "");
    EXPECT_EQ(groups[2].rows[1].badge, "");
}

TEST(MainView, leavesOutWhatHasNoScreenYet) {
    constexpr std::array some = {AppSection::rules, AppSection::processes};
    const auto groups = MainView::sidebar(some, 0, 0);
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].title, "Now");
    EXPECT_EQ(groups[0].rows.size(), 1U);
    EXPECT_EQ(groups[1].title, "Automation");
    EXPECT_THAT(MainView::sidebar({}, 3, 3), IsEmpty());
}

TEST(MainView, countsRulesThatAreOn) {
    EXPECT_EQ(MainView::enabledRules({{.enabled = true}, {.enabled = false}, {.enabled = true, .dryRun = false}}), 2U);
    EXPECT_EQ(MainView::enabledRules({}), 0U);
}

TEST(MainView, countsSuggestionsUntilTheMomentTheyAreHidden) {
    const Date now{Seconds{100}};
    const std::vector<Suggestion> suggestions{{.id = "shown"}, {.id = "hidden"}, {.id = "at"}, {.id = "past"}};
    const std::map<std::string, Date, std::less<>> hidden{
        {"hidden", distantFuture}, {"at", now}, {"past", Date{Seconds{99}}}};
    EXPECT_EQ(MainView::visibleSuggestions(suggestions, hidden, now), 2U);
    EXPECT_EQ(MainView::visibleSuggestions({}, hidden, now), 0U);
}

TEST(MainView, exportsOnlyWhatThereIs) {
    EXPECT_FALSE(MainView::canExport({}));
    EXPECT_TRUE(MainView::canExport({Rule{}}));
    EXPECT_EQ(MainView::importRules, "Import Rules…");
    EXPECT_EQ(MainView::exportRules, "Export Rules…");
    EXPECT_EQ(MainView::dismiss, "OK");
}

TEST(MainView, namesAFileAfterItsOnlyRule) {
    EXPECT_EQ(MainView::exportName({{.name = "Idle servers"}}), "Idle servers");
    EXPECT_EQ(MainView::exportName({{.name = "A"}, {.name = "B"}}), "Tolvane Rules");
}

}  // namespace
}  // namespace tolvane
