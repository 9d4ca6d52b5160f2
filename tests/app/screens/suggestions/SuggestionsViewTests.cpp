#include "app/screens/suggestions/SuggestionsView.h"

#include <gmock/gmock.h>

#include "app/screens/suggestions/SuggestionMenu.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Kind = Suggestion::Kind;

struct SuggestionsViewTest : ModelTest {
    void SetUp() override {
        startDemo();
        modelState->suggestions.set({});
        model->showHiddenSuggestions();
    }
    static Suggestion suggestion(std::string id, Kind kind, std::uint64_t memory = GiB) {
        return {.id = std::move(id), .kind = kind, .title = "vite in shop", .pids = {70}, .memory = memory};
    }
    static Suggestion ofApp(RuleAction action = RuleAction::relaunch) {
        auto made = suggestion("idle|app|com.example.Notes", Kind::idle);
        made.title = "Notes";
        made.appPath = "/Applications/Notes.app";
        made.action = action;
        made.rule = Rule{.id = UUID::random(), .name = "Restart Notes when idle", .enabled = true};
        return made;
    }
    SuggestionsView view() { return {*model, "en_US"}; }
    static std::vector<std::string> titles(const Suggestion& suggestion, bool includesPrimary) {
        std::vector<std::string> titles;
        for (const auto& item : SuggestionMenu::items(suggestion, includesPrimary)) titles.push_back(item.title);
        return titles;
    }
};

TEST_F(SuggestionsViewTest, theSubtitleSumsUpWhatIsVisible) {
    EXPECT_EQ(view().subtitle(), "");
    modelState->suggestions.set({suggestion("a", Kind::idle)});
    EXPECT_EQ(view().subtitle(), "1 GB in 1 suggestion");
    modelState->suggestions.set({suggestion("a", Kind::idle), suggestion("b", Kind::busy, GiB / 2)});
    EXPECT_EQ(view().subtitle(), "1.5 GB in 2 suggestions");
    modelState->hiddenSuggestions.set({{"a", distantFuture}});
    EXPECT_EQ(view().subtitle(), "512 MB in 1 suggestion");
}

TEST_F(SuggestionsViewTest, withEverySuggestionHiddenItIsEmptyAndTheyCanBeShown) {
    modelState->suggestions.set({suggestion("a", Kind::idle)});
    EXPECT_FALSE(view().canShowHidden());
    modelState->hiddenSuggestions.set({{"a", distantFuture}});
    EXPECT_THAT(view().sections(), IsEmpty());
    EXPECT_TRUE(view().canShowHidden());
    view().showHidden();
    EXPECT_FALSE(view().canShowHidden());
    EXPECT_THAT(view().sections(), SizeIs(1));
}

TEST_F(SuggestionsViewTest, itsWords) {
    EXPECT_EQ(SuggestionsView::showHiddenLabel, "Show Hidden Suggestions");
    EXPECT_EQ(SuggestionsView::showHiddenIcon, "eye");
    EXPECT_EQ(SuggestionsView::showHiddenHelp, "Show suggestions you snoozed or ignored");
    EXPECT_EQ(SuggestionsView::empty.title, "Nothing to Suggest");
    EXPECT_EQ(SuggestionsView::empty.icon, "checkmark.circle");
    EXPECT_EQ(SuggestionsView::empty.sentence,
              "Tolvane looks for idle simulators left booted, dev servers left running after their terminal closed, "
              "processes that keep growing, a second copy of the same dev server, processes that keep the CPU busy in "
              "the background, and idle apps holding memory. Growth shows up after two hours of watching.");
}

TEST_F(SuggestionsViewTest, eachKindHasItsSectionInOrder) {
    modelState->suggestions.set({suggestion("f", Kind::idle), suggestion("e", Kind::busy),
                                 suggestion("d", Kind::duplicate), suggestion("c", Kind::growing),
                                 suggestion("b", Kind::leftRunning), suggestion("a", Kind::simulator)});
    const auto sections = view().sections();
    std::vector<std::string> headings;
    std::vector<std::string> footers;
    for (const auto& section : sections) {
        headings.push_back(section.heading);
        footers.push_back(section.footer);
    }
    EXPECT_THAT(headings, ElementsAre("Simulator left booted", "Left running", "Growing steadily", "Running twice",
                                      "Keeping the CPU busy", "Idle"));
    EXPECT_THAT(footers,
                ElementsAre("A booted simulator keeps every one of its processes in memory until it shuts down, open "
                            "window or not.",
                            "Dev servers whose terminal or agent has quit, still listening on a port.",
                            "Memory has risen steadily for at least two hours, a common sign of a leak.",
                            "The same command in the same project, started more than once.",
                            "Half a CPU core or more for at least 15 minutes, while not the frontmost app.",
                            "Unused for a while and either large or mostly compressed while the Mac swaps."));
}

TEST_F(SuggestionsViewTest, kindsWithoutSuggestionsHaveNoSection) {
    modelState->suggestions.set({suggestion("c", Kind::growing)});
    EXPECT_THAT(view().sections(), SizeIs(1));
}

TEST_F(SuggestionsViewTest, whatIsBusyStandsByItsUseTheRestByMemory) {
    auto little = suggestion("little", Kind::busy, 4 * GiB);
    little.cpu = 60;
    auto much = suggestion("much", Kind::busy, GiB);
    much.cpu = 210;
    modelState->suggestions.set(
        {little, suggestion("large", Kind::idle, 3 * GiB), much, suggestion("small", Kind::idle)});
    const auto sections = view().sections();
    ASSERT_THAT(sections, SizeIs(2));
    EXPECT_EQ(sections[0].rows[0].suggestion.id, "much");
    EXPECT_EQ(sections[0].rows[0].figure, "2.1 cores");
    EXPECT_EQ(sections[0].rows[1].figure, "0.6 cores");
    EXPECT_EQ(sections[1].rows[0].suggestion.id, "large");
    EXPECT_EQ(sections[1].rows[0].figure, "3 GB");
    EXPECT_EQ(sections[1].rows[1].suggestion.id, "small");
}

TEST_F(SuggestionsViewTest, thePrimaryLabelFollowsKindAndAction) {
    EXPECT_EQ(SuggestionMenu::primaryLabel(suggestion("a", Kind::simulator)), "Shut Down");
    auto copies = suggestion("a", Kind::duplicate);
    EXPECT_EQ(SuggestionMenu::primaryLabel(copies), "Stop Old Copy");
    copies.pids = {70, 71};
    EXPECT_EQ(SuggestionMenu::primaryLabel(copies), "Stop Old Copies");
    EXPECT_EQ(SuggestionMenu::primaryLabel(ofApp(RuleAction::quit)), "Quit");
    EXPECT_EQ(SuggestionMenu::primaryLabel(ofApp()), "Restart");
    EXPECT_EQ(SuggestionMenu::primaryLabel(suggestion("a", Kind::leftRunning)), "Stop");
}

TEST_F(SuggestionsViewTest, theMenuOfAnApplicationOffersToQuitIt) {
    EXPECT_THAT(titles(ofApp(), true),
                ElementsAre("Restart", "Quit Notes", "Make Rule", "", "Snooze for a Day", "Ignore"));
    EXPECT_THAT(titles(ofApp(), false), ElementsAre("Quit Notes", "", "Snooze for a Day", "Ignore"));
    EXPECT_THAT(titles(ofApp(RuleAction::quit), false), ElementsAre("", "Snooze for a Day", "Ignore"));
}

TEST_F(SuggestionsViewTest, theMenuOfAProcessOffersToLowerIt) {
    EXPECT_THAT(titles(suggestion("a", Kind::leftRunning), true),
                ElementsAre("Stop", "Lower Priority", "", "Snooze for a Day", "Ignore"));
}

TEST_F(SuggestionsViewTest, theMenuOfASimulatorOffersNeither) {
    EXPECT_THAT(titles(suggestion("a", Kind::simulator), true),
                ElementsAre("Shut Down", "", "Snooze for a Day", "Ignore"));
}

TEST_F(SuggestionsViewTest, aSnoozeLastsForADay) {
    const auto made = suggestion("a", Kind::idle);
    SuggestionMenu::carryOut(*model, made, SuggestionAction::snooze);
    EXPECT_EQ(model->hiddenSuggestions->at("a"), clock.now() + Seconds{86'400});
}

TEST_F(SuggestionsViewTest, ignoringLastsForGood) {
    SuggestionMenu::carryOut(*model, suggestion("a", Kind::idle), SuggestionAction::ignore);
    EXPECT_EQ(model->hiddenSuggestions->at("a"), distantFuture);
}

TEST_F(SuggestionsViewTest, makingARuleAddsIt) {
    const auto made = ofApp();
    const auto before = model->rules->size();
    SuggestionMenu::carryOut(*model, made, SuggestionAction::makeRule);
    ASSERT_EQ(model->rules->size(), before + 1);
    EXPECT_EQ(model->rules->back().name, "Restart Notes when idle");
    SuggestionMenu::carryOut(*model, suggestion("a", Kind::idle), SuggestionAction::makeRule);
    EXPECT_EQ(model->rules->size(), before + 1);
    EXPECT_EQ(SuggestionMenu::makeRule, "Make Rule");
    EXPECT_EQ(SuggestionMenu::makeRuleHelp, "Adds a rule in Log Only, so it writes what it would do to Activity first");
}

TEST_F(SuggestionsViewTest, actingTakesTheRowAwayAtOnce) {
    modelState->suggestions.set({suggestion("a", Kind::leftRunning)});
    SuggestionMenu::carryOut(*model, model->suggestions->front(), SuggestionAction::lowerPriority);
    EXPECT_THAT(*model->suggestions, IsEmpty());
}

TEST_F(SuggestionsViewTest, whatLivesOnIsMeantAndANewcomerUnderItsNumberIsNot) {
    auto snapshot = *model->snapshot;
    const Pid stays = snapshot.rows[0].id();
    const Pid goes = snapshot.rows[1].id();
    auto both = suggestion("a", Kind::leftRunning);
    both.pids = {stays, goes};
    modelState->suggestions.set({both});
    auto shown = view();
    const auto row = shown.sections().front().rows.front();
    snapshot.rows[1].sample.startTime += Seconds{1};
    modelState->snapshot.set(snapshot);
    shown.carryOut(row, SuggestionAction::lowerPriority);
    EXPECT_EQ(world.timesAsked("lower " + std::to_string(stays)), 1U);
    EXPECT_EQ(world.timesAsked("lower " + std::to_string(goes)), 0U);
    EXPECT_THAT(*model->suggestions, IsEmpty());
}

TEST_F(SuggestionsViewTest, aNewIdOfAProposedRuleIsNoOtherRow) {
    const auto first = SuggestionRow::of(ofApp(), "en_US");
    auto second = SuggestionRow::of(ofApp(), "en_US");
    EXPECT_TRUE(first.looksLike(second));
    second.suggestion.evidence = "other";
    EXPECT_FALSE(first.looksLike(second));
}

}  // namespace
}  // namespace tolvane
