#include "desktop/rules/RulesPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QListView>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "app/screens/rules/MatchesSection.h"
#include "app/screens/rules/RuleModeTraits.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/PopupPicker.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/parts/Switch.h"
#include "desktop/rules/MatchesCard.h"
#include "desktop/rules/NewRuleDialog.h"
#include "desktop/rules/RuleEditorPane.h"
#include "desktop/rules/RuleSuggestionModel.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/SampleRules.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class RulesPageTest : public ::testing::Test {
protected:
    RulesPageTest() {
        scene.look.install();
        scene.model.show(AppSection::rules);
        const auto sample = fakes::SampleRules::on(scene.model.snapshot->rows, *scene.fake.world);
        scene.showRows(sample.rows);
        scene.modelState->rules.set(sample.rules);
        page = std::make_unique<RulesPage>(model(), scene.look, scene.state, "en_US");
        page->resize(860, 588);
        page->show();
        turnLoop();
    }

    AppModel& model() { return scene.model; }
    const Rule& rule(std::size_t number) { return (*model().rules)[number]; }
    const RuleListModel& rows() { return page->list().rules(); }
    void clickRow(int number) {
        const auto index = rows().index(number);
        click(*page->list().viewport(), page->list().visualRect(index).center());
        turnLoop();
    }
    template <typename Widget>
    Widget* named(std::string_view name) {
        for (auto* each : page->findChildren<Widget*>()) {
            if (each->accessibleName() == qtText(name)) return each;
        }
        return nullptr;
    }
    void choose(std::string_view picker, const QString& text) {
        auto* combo = named<PopupPicker>(picker);
        ASSERT_TRUE(combo);
        const int index = combo->findText(text);
        ASSERT_GE(index, 0) << utf8(text);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
        turnLoop();
    }
    QString shown(std::string_view picker) { return named<PopupPicker>(picker)->currentText(); }
    bool isShown(QWidget* widget) { return widget && widget->isVisible(); }
    /// Whether a visible widget below `whole` has that text.
    static bool says(const QWidget& whole, std::string_view text) {
        return std::ranges::any_of(whole.findChildren<QWidget*>(), [text](const QWidget* each) {
            return each->isVisible() && each->accessibleName() == qtText(text);
        });
    }
    bool says(std::string_view text) const { return says(*page, text); }
    /// Gives this machine sessions that report whether they got a prompt.
    void listSessions() {
        scene.fake.world->home = folder.path().string();
        std::filesystem::create_directories(folder / ".claude/daemon");
    }

    fakes::TemporaryFolder folder;
    SampleScene scene;
    std::unique_ptr<RulesPage> page;
};

TEST_F(RulesPageTest, listsRulesWithWhatTheyWouldHit) {
    ASSERT_EQ(rows().rowCount(), 5);
    EXPECT_EQ(rows().row(0).status, "3 matches running, 2 past the limit");
    EXPECT_EQ(rows().data(rows().index(0), Qt::AccessibleTextRole).toString(),
              "Forgotten Vite and Next dev servers, Terminate when unused for 2h, Log Only, 3 matches running, 2 past "
              "the limit");
}

TEST_F(RulesPageTest, aClickSelectsTheRuleInTheModel) {
    EXPECT_EQ(*model().selectedRule, std::nullopt);
    clickRow(1);
    EXPECT_EQ(*model().selectedRule, rule(1).id);
    EXPECT_EQ(named<QLineEdit>("Name")->text(), "Idle Rails servers");
    clickRow(3);
    EXPECT_EQ(*model().selectedRule, rule(3).id);
}

TEST_F(RulesPageTest, theSelectionOfTheModelIsShown) {
    model().selectRule(rule(2).id);
    turnLoop();
    EXPECT_EQ(page->list().current(), rule(2).id);
    model().selectRule(std::nullopt);
    turnLoop();
    EXPECT_EQ(page->list().current(), std::nullopt);
    EXPECT_FALSE(widgetNamed<RuleEditorPane>(*page, "editor").isVisible());
}

TEST_F(RulesPageTest, theSelectionOutlivesTicksAndChangesOfItsRule) {
    clickRow(1);
    widgetNamed<RuleEditorPane>(*page, "editor").editor()->setName("Renamed");
    scene.showRows(model().snapshot->rows);
    turnLoop();
    EXPECT_EQ(page->list().current(), rule(1).id);
    EXPECT_EQ(rows().row(1).name, "Renamed");
}

TEST_F(RulesPageTest, typingANameChangesTheRuleLetterByLetter) {
    clickRow(0);
    auto* name = named<QLineEdit>("Name");
    name->setFocus();
    name->selectAll();
    type(*name, Qt::Key_A, "A");
    type(*name, Qt::Key_B, "b");
    turnLoop();
    EXPECT_EQ(rule(0).name, "Ab");
    EXPECT_EQ(name->text(), "Ab");
    EXPECT_EQ(rows().row(0).name, "Ab");
}

TEST_F(RulesPageTest, thePatternsAreKeptWhenTheFieldIsLeft) {
    clickRow(0);
    auto* patterns = named<QLineEdit>("Command contains");
    EXPECT_EQ(patterns->text(), "vite/bin/vite.js, next dev, next-server, webpack serve");
    patterns->selectAll();
    type(*patterns, Qt::Key_X, "x");
    EXPECT_THAT(std::get<CommandTarget>(rule(0).target).patterns, SizeIs(4));
    type(*patterns, Qt::Key_Return);
    EXPECT_THAT(std::get<CommandTarget>(rule(0).target).patterns, ElementsAre("x"));
}

TEST_F(RulesPageTest, choosingAnotherRuleKeepsWhatWasTyped) {
    clickRow(0);
    auto* patterns = named<QLineEdit>("Command contains");
    patterns->setFocus();
    patterns->selectAll();
    type(*patterns, Qt::Key_X, "x");
    model().selectRule(rule(1).id);
    turnLoop();
    EXPECT_THAT(std::get<CommandTarget>(rule(0).target).patterns, ElementsAre("x"));
    EXPECT_EQ(patterns->text(), "puma , rails server");
    EXPECT_THAT(std::get<CommandTarget>(rule(1).target).patterns, ElementsAre("puma ", "rails server"));
}

TEST_F(RulesPageTest, aModeIsChosenWithItsExplanation) {
    clickRow(0);
    for (auto* each : page->findChildren<QRadioButton*>()) {
        if (each->text() == "On") each->click();
    }
    turnLoop();
    EXPECT_EQ(rule(0).mode(), RuleMode::on);
    EXPECT_EQ(scene.fake.world->permissionRequests, 1);
    EXPECT_EQ(rows().row(0).mode, "On");
}

TEST_F(RulesPageTest, showingARuleAsksForNothing) {
    for (int number = 0; number < 5; ++number) clickRow(number);
    EXPECT_EQ(scene.fake.world->permissionRequests, 0);
    EXPECT_EQ(model().rules->front().mode(), RuleMode::logOnly);
}

TEST_F(RulesPageTest, conditionsAndActionsAreChosen) {
    clickRow(0);
    EXPECT_EQ(shown("Unused for"), "2 hours");
    EXPECT_EQ(shown("Using more than"), "Don't check");
    choose("Unused for", "Don't check");
    choose("Using more than", "1.5 GB");
    choose("Then", "Lower Priority");
    named<Switch>("Only when memory is tight")->click();
    EXPECT_EQ(rule(0).unusedMinutes, std::nullopt);
    EXPECT_EQ(rule(0).memoryMB, 1536);
    EXPECT_EQ(rule(0).action, RuleAction::lowerPriority);
    EXPECT_EQ(rule(0).onlyWhenTight, true);
}

TEST_F(RulesPageTest, eachKindShowsItsOwnControls) {
    clickRow(0);
    EXPECT_TRUE(isShown(named<QLineEdit>("Command contains")));
    EXPECT_FALSE(isShown(named<PopupPicker>("App")));
    choose("Applies to", "An app");
    EXPECT_FALSE(isShown(named<QLineEdit>("Command contains")));
    EXPECT_TRUE(isShown(named<PopupPicker>("App")));
    EXPECT_EQ(shown("App"), "Choose an app");
    EXPECT_EQ(shown("Then"), "Notify");
    choose("App", named<PopupPicker>("App")->itemText(1));
    EXPECT_EQ(std::get<AppTarget>(rule(0).target).name, "Google Chrome");
    choose("Applies to", "AI agent sessions");
    EXPECT_TRUE(isShown(named<QLineEdit>("Agent programs")));
    EXPECT_FALSE(isShown(named<Switch>("Only Claude Code sessions that never got a prompt")));
}

TEST_F(RulesPageTest, saysWhatEachControlIsAbout) {
    clickRow(0);
    EXPECT_TRUE(says(traits(rule(0).mode()).explanation));
    EXPECT_TRUE(says(RuleEditor::commandHint));
    EXPECT_FALSE(says(RuleEditor::appHint));
    EXPECT_TRUE(says(RuleEditor::conditionsHeading));
    EXPECT_TRUE(says(MatchesSection::heading));
    EXPECT_EQ(named<QLineEdit>("Command contains")->placeholderText(), qtText(RuleEditor::commandPrompt));
    choose("Applies to", "An app");
    EXPECT_TRUE(says(RuleEditor::appHint));
    choose("Applies to", "AI agent sessions");
    EXPECT_TRUE(says(RuleEditor::agentHint));
    EXPECT_FALSE(says(RuleEditor::appHint));
}

TEST_F(RulesPageTest, saysWhatTheConditionsMean) {
    clickRow(0);
    choose("Unused for", "Don't check");
    choose("Using more than", "Don't check");
    EXPECT_TRUE(says("Pick at least one condition. Without one the rule never acts."));
    choose("Using more than", "1 GB");
    EXPECT_TRUE(
        says("A process counts as unused while its CPU stays under 1%. Tolvane starts counting when it starts "
             "watching."));
    named<Switch>("Only when memory is tight")->click();
    turnLoop();
    EXPECT_TRUE(
        says("A process counts as unused while its CPU stays under 1%. Tolvane starts counting when it starts "
             "watching. Memory is tight while macOS reports memory pressure, or after swap grew by 512 MB in "
             "15 minutes."));
}

TEST_F(RulesPageTest, sessionsWithoutAPromptAreOfferedWhereSessionsAreListed) {
    listSessions();
    clickRow(0);
    EXPECT_FALSE(isShown(named<Switch>("Only Claude Code sessions that never got a prompt")));
    choose("Applies to", "AI agent sessions");
    auto* only = named<Switch>("Only Claude Code sessions that never got a prompt");
    ASSERT_TRUE(isShown(only));
    only->click();
    EXPECT_TRUE(std::get<AgentSessionTarget>(rule(0).target).onlyWithoutPrompt);
}

TEST_F(RulesPageTest, anOpenMenuHoldsItsOrderWhileFiguresChange) {
    clickRow(3);
    auto* apps = named<PopupPicker>("App");
    const auto wanted = apps->itemText(0);
    QTimer::singleShot(0, [&] {
        auto rows = model().snapshot->rows;
        for (auto& row : rows) row.sample.footprint = 4'000'000'000U / static_cast<std::uint64_t>(row.id());
        scene.showRows(rows);
        turnLoop();
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        menu->setActiveAction(menu->actions().first());
        type(*menu, Qt::Key_Return);
    });
    type(*apps, Qt::Key_Space);
    EXPECT_EQ(qtText(std::get<AppTarget>(rule(3).target).name), wanted.section(QStringLiteral(", "), 0, 0));
}

TEST_F(RulesPageTest, aMenuThatIsOpenClosesWithItsRule) {
    clickRow(0);
    auto* unused = named<PopupPicker>("Unused for");
    QTimer::singleShot(0, [&] {
        ASSERT_TRUE(unused->isOpen());
        model().selectRule(rule(1).id);
        turnLoop();
    });
    unused->showPopup();
    EXPECT_FALSE(unused->isOpen());
    EXPECT_EQ(rule(0).unusedMinutes, 120);
    EXPECT_EQ(rule(1).unusedMinutes, 240);
}

TEST_F(RulesPageTest, theWheelChangesNoChoice) {
    clickRow(0);
    auto* unused = named<PopupPicker>("Unused for");
    QWheelEvent wheel(QPointF(5, 5), unused->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(unused, &wheel);
    EXPECT_EQ(rule(0).unusedMinutes, 120);
}

TEST_F(RulesPageTest, theButtonDeletesTheRule) {
    clickRow(0);
    const auto id = rule(0).id;
    for (auto* each : page->findChildren<QPushButton*>()) {
        if (each->text() == "Delete Rule") each->click();
    }
    turnLoop();
    EXPECT_EQ(RulesView::find(*model().rules, id), nullptr);
    EXPECT_EQ(*model().selectedRule, std::nullopt);
    EXPECT_EQ(rows().rowCount(), 4);
    EXPECT_FALSE(widgetNamed<RuleEditorPane>(*page, "editor").isVisible());
}

TEST_F(RulesPageTest, theDeleteKeyAsksFirst) {
    clickRow(0);
    type(page->list(), Qt::Key_Delete);
    auto* question = page->findChild<QuestionDialog*>();
    ASSERT_TRUE(question);
    EXPECT_EQ(question->accessibleName(), "Delete “Forgotten Vite and Next dev servers”?");
    question->reject();
    turnLoop();
    EXPECT_EQ(rows().rowCount(), 5);
    type(page->list(), Qt::Key_Delete);
    page->findChildren<QuestionDialog*>().last()->accept();
    turnLoop();
    EXPECT_EQ(rows().rowCount(), 4);
}

TEST_F(RulesPageTest, menusOfferWhatTheyOffer) {
    clickRow(0);
    const auto titlesOfNextMenu = [](QStringList& titles, const QString& chosen) {
        QTimer::singleShot(0, [&titles, chosen] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu) return;
            for (auto* action : menu->actions()) {
                titles.append(action->text());
                if (action->text() == chosen) menu->setActiveAction(action);
            }
            chosen.isEmpty() ? static_cast<void>(menu->close()) : type(*menu, Qt::Key_Return);
        });
    };
    QStringList share;
    titlesOfNextMenu(share, {});
    page->findChild<MenuButton*>()->click();
    EXPECT_EQ(share, QStringList({"Import Rules…", "Export Rules…"}));
    QStringList row;
    titlesOfNextMenu(row, "Export…");
    emit page->list().menuWanted(QPoint(10, 10));
    EXPECT_EQ(row, QStringList({"Export…", "Delete"}));
    ASSERT_TRUE(*model().exporting);
    EXPECT_THAT(**model().exporting, ElementsAre(rule(0)));
}

TEST_F(RulesPageTest, withoutASelectionItOffersToAddARule) {
    auto buttons = page->findChildren<QPushButton*>();
    const auto add =
        std::ranges::find_if(buttons, [&](auto* each) { return each->isVisible() && each->text() == "Add Rule"; });
    ASSERT_NE(add, buttons.end());
    (*add)->click();
    EXPECT_TRUE(page->findChild<NewRuleDialog*>());
}

TEST_F(RulesPageTest, everyControlHasANameAndCanBeReachedByTab) {
    clickRow(0);
    int count = 0;
    for (auto* each : page->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<QAbstractButton*>(each) || qobject_cast<QLineEdit*>(each) ||
                               qobject_cast<QComboBox*>(each) || qobject_cast<QListView*>(each);
        if (!isControl || !each->isVisible() || each->objectName().startsWith("qt_")) continue;
        ++count;
        const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(each);
        ASSERT_TRUE(spoken);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << each->metaObject()->className();
        EXPECT_NE(each->focusPolicy() & Qt::TabFocus, 0) << each->metaObject()->className();
    }
    EXPECT_GE(count, 10);
}

TEST_F(RulesPageTest, matchesFollowTheMachine) {
    clickRow(0);
    EXPECT_THAT(page->findChild<MatchesCard*>()->rows(), SizeIs(3));
    scene.showRows({});
    turnLoop();
    EXPECT_THAT(page->findChild<MatchesCard*>()->rows(), SizeIs(1));
}

TEST(RuleListModel, keepsTheRulesOfAModel) {
    RuleListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto id = UUID::random();
    model.show({{.id = id, .name = "a"}, {.id = UUID::random(), .name = "b"}});
    model.show({{.id = id, .name = "c"}});
    EXPECT_EQ(model.find(id).row(), 0);
    EXPECT_FALSE(model.find(UUID::random()).isValid());
    model.show({});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(RuleSuggestionModel, keepsTheRulesOfAModel) {
    RuleSuggestionModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.show({{.id = "a", .title = "Mail"}, {.id = "b", .title = "Maps"}});
    model.show({{.id = "a", .title = "Mail"}, {.id = "b", .title = "Notes"}});
    EXPECT_EQ(model.find("b").data().toString(), "Notes");
    EXPECT_FALSE(model.find("c").isValid());
    model.show({});
    EXPECT_EQ(model.rowCount(), 0);
}

// The sheet

class NewRuleDialogTest : public RulesPageTest {
protected:
    NewRuleDialogTest() {
        page->openSheet();
        turnLoop();
        dialog = page->findChild<NewRuleDialog*>();
    }
    QPushButton* button(const QString& text) {
        for (auto* each : dialog->findChildren<QPushButton*>()) {
            if (each->text() == text) return each;
        }
        return nullptr;
    }
    void watch(const QString& kind) {
        for (auto* each : dialog->findChildren<QRadioButton*>()) {
            if (each->text() == kind) each->click();
        }
        turnLoop();
    }
    void choose(int row) {
        widgetNamed<QListView>(*dialog, "suggestions")
            .setCurrentIndex(widgetNamed<QListView>(*dialog, "suggestions").model()->index(row, 0));
    }

    QPointer<NewRuleDialog> dialog;
};

TEST_F(NewRuleDialogTest, addsTheRuleOfTheChosenEntry) {
    ASSERT_TRUE(dialog);
    EXPECT_FALSE(button("Add Rule")->isEnabled());
    choose(0);
    EXPECT_TRUE(button("Add Rule")->isEnabled());
    button("Add Rule")->click();
    turnLoop();
    EXPECT_THAT(*model().rules, SizeIs(6));
    EXPECT_EQ(model().rules->back().name, "Restart Google Chrome when it grows");
    EXPECT_EQ(page->list().current(), model().rules->back().id);
    EXPECT_FALSE(dialog && dialog->isVisible());
}

TEST_F(NewRuleDialogTest, aSecondWishOpensNoSecondSheet) {
    EXPECT_TRUE(page->addingRule());
    page->openSheet();
    EXPECT_THAT(page->findChildren<NewRuleDialog*>(), SizeIs(1));
    dialog->reject();
    turnLoop();
    EXPECT_FALSE(page->addingRule());
}

TEST_F(NewRuleDialogTest, cancelAndEscapeAddNothing) {
    choose(0);
    button("Cancel")->click();
    turnLoop();
    EXPECT_THAT(*model().rules, SizeIs(5));
}

TEST_F(NewRuleDialogTest, typedTextMakesARule) {
    watch("A command");
    auto* typed = dialog->findChild<QLineEdit*>();
    ASSERT_TRUE(typed->isVisible());
    EXPECT_FALSE(button("Add Rule")->isEnabled());
    typed->setText("puma");
    EXPECT_TRUE(button("Add Rule")->isEnabled());
    button("Add Rule")->click();
    EXPECT_EQ(model().rules->back().name, "Stop idle puma");
}

TEST_F(NewRuleDialogTest, theChosenEntryStaysChosenAcrossTicks) {
    watch("A command");
    choose(1);
    const auto selected = dialog->sheet().selection;
    ASSERT_TRUE(selected);
    auto rows = model().snapshot->rows;
    std::ranges::reverse(rows);
    scene.showRows(rows);
    turnLoop();
    EXPECT_EQ(dialog->sheet().selection, selected);
    EXPECT_FALSE(widgetNamed<QListView>(*dialog, "suggestions").selectionModel()->selectedIndexes().isEmpty());
}

TEST_F(NewRuleDialogTest, sessionsNeedNoChoice) {
    watch("AI agent sessions");
    EXPECT_FALSE(dialog->findChild<QLineEdit*>()->isVisible());
    EXPECT_TRUE(button("Add Rule")->isEnabled());
    EXPECT_FALSE(says(*dialog, NewRuleSheet::noSessions));
    scene.showRows({});
    turnLoop();
    EXPECT_FALSE(widgetNamed<QListView>(*dialog, "suggestions").isVisible());
    EXPECT_TRUE(says(*dialog, NewRuleSheet::noSessions));
    EXPECT_TRUE(button("Add Rule")->isEnabled());
}

TEST_F(NewRuleDialogTest, saysWhatItWouldAdd) {
    EXPECT_TRUE(says(*dialog, "Choose an app."));
    choose(0);
    EXPECT_TRUE(says(*dialog,
                     "Restart Google Chrome when it grows. Starts in Log Only, so it only writes what it would "
                     "do to Activity."));
    watch("A command");
    EXPECT_TRUE(says(*dialog, "Choose a process or type part of its command line."));
    EXPECT_EQ(dialog->findChild<QLineEdit*>()->placeholderText(),
              "Or type part of the command line, like puma or next dev");
    watch("AI agent sessions");
    EXPECT_TRUE(says(*dialog,
                     "Idle AI agent sessions. Starts in Log Only, so it only writes what it would do to "
                     "Activity."));
}

TEST_F(NewRuleDialogTest, withoutListedSessionsThereIsNoQuestionOfPrompts) {
    watch("AI agent sessions");
    EXPECT_FALSE(isShown(dialog->findChild<Switch*>()));
    button("Add Rule")->click();
    EXPECT_FALSE(std::get<AgentSessionTarget>(model().rules->back().target).onlyWithoutPrompt);
}

TEST_F(NewRuleDialogTest, withListedSessionsThoseWithoutAPromptCanBeWatched) {
    listSessions();
    EXPECT_FALSE(isShown(dialog->findChild<Switch*>()));
    watch("AI agent sessions");
    auto* only = dialog->findChild<Switch*>();
    ASSERT_TRUE(isShown(only));
    only->click();
    button("Add Rule")->click();
    EXPECT_EQ(model().rules->back().name, "Claude Code sessions that never got a prompt");
    EXPECT_EQ(model().rules->back().unusedMinutes, 30);
}

}  // namespace
}  // namespace tolvane::desktop
