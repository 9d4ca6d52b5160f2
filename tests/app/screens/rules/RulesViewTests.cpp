#include "app/screens/rules/RulesView.h"

#include <gmock/gmock.h>

#include "app/screens/rules/MatchesSection.h"
#include "app/screens/rules/RuleModeTraits.h"
#include "app/screens/rules/RuleStatus.h"
#include "tests/app/screens/rules/RulesScene.h"

namespace tolvane {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

struct RulesViewTest : RulesScene {
    std::vector<RuleRow> rows() const { return RulesView::rows(*model, locale); }
    RuleStatus status() const { return RuleStatus::of(first(), model->world(), now); }
    MatchesSection matches() const { return MatchesSection::of(status(), now, locale); }
    void showPumas(int count) {
        std::vector<ProcRow> rows;
        for (Pid pid = 10; pid < 10 + count; ++pid) rows.push_back(puma(pid, pid));
        showRows(std::move(rows));
    }
};

TEST_F(RulesViewTest, listsTheRulesInStoredOrder) {
    auto on = appRule();
    on.setMode(RuleMode::on);
    modelState->rules.set({commandRule(), on});
    const auto list = rows();
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0], (RuleRow{.id = first().id,
                                .name = "Idle puma",
                                .summary = "Terminate when unused for 45m",
                                .status = std::nullopt,
                                .mode = "Off",
                                .isOn = false}));
    EXPECT_EQ(list[1].mode, "On");
    EXPECT_TRUE(list[1].isOn);
}

TEST_F(RulesViewTest, aRuleThatIsOffCountsItsMatchesPastTheLimit) {
    EXPECT_EQ(rows()[0].status, std::nullopt);
    showRows({puma(10, 5)});
    EXPECT_EQ(rows()[0].status, "1 match running");
    showRows({puma(10, 5), puma(11, 45), puma(12, 90)});
    EXPECT_EQ(first().mode(), RuleMode::off);
    EXPECT_EQ(rows()[0].status, "3 matches running, 2 past the limit");
}

TEST_F(RulesViewTest, coolDownsAreNoPartOfTheQuestion) {
    showRows({puma(10, 90)});
    auto rule = first();
    rule.setMode(RuleMode::logOnly);
    modelState->rules.set({rule});
    clock.advance(Seconds{120});
    showRows({puma(10, 90)});
    EXPECT_EQ(rows()[0].status, "1 match running, 1 past the limit");
}

TEST_F(RulesViewTest, aMatchTellsWhatTheRuleDidToItWithinItsCoolDown) {
    showRows({puma(10, 90), puma(11, 90)});
    const auto key = status().matches.front().subjectKey;
    const auto entry = [&](double ago) {
        return ActivityEntry{.id = UUID::random(),
                             .date = now - Seconds{ago},
                             .ruleName = "Idle puma",
                             .subject = "puma",
                             .outcome = "Would terminate",
                             .dryRun = true,
                             .subjectKey = Text(key)};
    };
    const auto outcomes = [&](const std::vector<ActivityEntry>& activity) {
        auto list = matches();
        list.addLastOutcomes(first(), status(), activity, now, locale);
        return std::pair(list.rows.at(0).lastOutcome, list.rows.at(1).lastOutcome);
    };
    EXPECT_THAT(outcomes({entry(60)}).first, ::testing::StartsWith("Would terminate at "));
    EXPECT_EQ(outcomes({entry(60)}).second, "");
    EXPECT_EQ(outcomes({entry(601)}).first, "");
    auto other = entry(60);
    other.ruleName = "Another";
    EXPECT_EQ(outcomes({other}).first, "");
    EXPECT_EQ(outcomes({}).first, "");
}

TEST_F(RulesViewTest, aRuleWithoutAConditionHasMatchesButNoneIsDue) {
    auto rule = first();
    rule.unusedMinutes.reset();
    modelState->rules.set({rule});
    showPumas(3);
    EXPECT_EQ(rows()[0].status, "3 matches running");
}

TEST_F(RulesViewTest, saysThatAppRulesHoldBackWhereTheHostCannotTellWhoIsInFront) {
    world.canTellFrontmost = false;
    EXPECT_EQ(RulesView::notice(*model), std::nullopt);
    modelState->rules.set({commandRule(), appRule()});
    EXPECT_EQ(RulesView::notice(*model),
              "This desktop does not tell which app is in front, so rules that quit or relaunch apps hold back.");
    world.canTellFrontmost = true;
    EXPECT_EQ(RulesView::notice(*model), std::nullopt);
}

TEST_F(RulesViewTest, findsTheSelectedRuleWhileItIsThere) {
    EXPECT_EQ(RulesView::selected(*model), nullptr);
    model->selectRule(first().id);
    EXPECT_EQ(RulesView::selected(*model), &first());
    model->selectRule(UUID::random());
    EXPECT_EQ(RulesView::selected(*model), nullptr);
}

TEST_F(RulesViewTest, givesTheRulesUnderAMenuInOrder) {
    modelState->rules.set({commandRule(), appRule()});
    EXPECT_EQ(RulesView::rulesOf(*model, {(*model->rules)[1].id}), std::vector{(*model->rules)[1]});
    EXPECT_THAT(RulesView::rulesOf(*model, {}), IsEmpty());
}

TEST(RulesViewWords, areThese) {
    EXPECT_EQ(RulesView::noSelectionTitle, "No Rule Selected");
    EXPECT_EQ(RulesView::noSelectionIcon, "slider.horizontal.3");
    EXPECT_EQ(RulesView::noSelectionText,
              "Rules stop or restart processes that sit unused or grow too large. A new rule only logs what it would "
              "do until you turn it on.");
    EXPECT_EQ(RulesView::addRule, "Add Rule");
    EXPECT_EQ(RulesView::shareRules, "Share Rules");
    EXPECT_EQ(RulesView::shareIcon, "square.and.arrow.up");
    EXPECT_EQ(RulesView::exportRow, "Export…");
    EXPECT_EQ(RulesView::deleteRow, "Delete");
}

TEST(RuleModeWords, explainEachMode) {
    EXPECT_EQ(traits(RuleMode::off).title, "Off");
    EXPECT_EQ(traits(RuleMode::off).explanation, "The rule does nothing.");
    EXPECT_EQ(traits(RuleMode::logOnly).title, "Log Only");
    EXPECT_EQ(traits(RuleMode::logOnly).explanation, "Writes what the rule would do to Activity without doing it.");
    EXPECT_EQ(traits(RuleMode::on).title, "On");
    EXPECT_EQ(traits(RuleMode::on).explanation,
              "Acts on every match that meets the conditions, at most once every 10 minutes per match.");
}

// Matches

TEST_F(RulesViewTest, withoutMatchesTheListIsEmpty) {
    EXPECT_THAT(matches().rows, IsEmpty());
    EXPECT_EQ(matches().more, std::nullopt);
    EXPECT_EQ(MatchesSection::none, "Nothing running matches this rule.");
    EXPECT_EQ(MatchesSection::heading, "Matches now");
}

TEST_F(RulesViewTest, aMatchTellsItsSizeItsTimeAndWhetherItIsPastTheLimit) {
    showRows({puma(10, 5), puma(11, 90)});
    const auto list = matches();
    ASSERT_THAT(list.rows, SizeIs(2));
    EXPECT_EQ(list.rows[0].title, status().matches[0].title);
    EXPECT_EQ(list.rows[0].detail, "100 MB, unused for 5m");
    EXPECT_EQ(list.rows[0].tag(), "Within the limit");
    EXPECT_EQ(list.rows[1].detail, "100 MB, unused for 1h 30m");
    EXPECT_EQ(list.rows[1].tag(), "Past the limit");
}

TEST_F(RulesViewTest, twelveMatchesShowNoClosingLineThirteenDo) {
    showPumas(12);
    EXPECT_THAT(matches().rows, SizeIs(12));
    EXPECT_EQ(matches().more, std::nullopt);
    showPumas(13);
    EXPECT_THAT(matches().rows, SizeIs(12));
    EXPECT_EQ(matches().more, "and 1 more");
    showPumas(20);
    EXPECT_EQ(matches().more, "and 8 more");
}

}  // namespace
}  // namespace tolvane
