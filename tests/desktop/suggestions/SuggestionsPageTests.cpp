#include "desktop/suggestions/SuggestionsPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>

#include "desktop/look/QtText.h"
#include "desktop/parts/NoticeBar.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SuggestionsPageTest : public ::testing::Test {
protected:
    SuggestionsPageTest() {
        scene.modelState->suggestions.set({ofApp(), server()});
        scene.model.showHiddenSuggestions();
        page = std::make_unique<SuggestionsPage>(scene.model, scene.look, "en_US");
        page->resize(860, 588);
        page->show();
        turnLoop();
    }
    ~SuggestionsPageTest() override {
        while (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) menu->close();
    }

    static Suggestion ofApp() {
        return {.id = "idle|app|com.example.Notes",
                .kind = Suggestion::Kind::idle,
                .title = "Notes",
                .appPath = "/Applications/Notes.app",
                .pids = {80},
                .memory = 1ULL << 30U,
                .evidence = "Unused for 2 hr, using 1 GB.",
                .action = RuleAction::relaunch,
                .rule = Rule{.id = UUID::random(), .name = "Restart Notes when idle"}};
    }
    static Suggestion server() {
        return {.id = "left|/home/ada/src/shop|vite",
                .kind = Suggestion::Kind::leftRunning,
                .title = "vite in shop",
                .pids = {999'999},
                .memory = 1ULL << 29U,
                .evidence = "Its terminal is gone.",
                .action = RuleAction::terminate};
    }
    SuggestionRowWidget& row(std::size_t card, std::size_t number = 0) {
        return *page->cards().at(card)->rows().at(number);
    }
    static QStringList titles(const QMenu& menu) {
        QStringList titles;
        for (const auto* action : menu.actions()) titles << (action->isSeparator() ? QString() : action->text());
        return titles;
    }
    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static void trigger(QMenu& menu, const QString& title) {
        for (auto* action : menu.actions()) {
            if (action->text() == title) action->trigger();
        }
        menu.close();
        turnLoop();
    }
    void openContextMenu(SuggestionRowWidget& row) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), row.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&row, &event);
    }

    SampleScene scene;
    std::unique_ptr<SuggestionsPage> page;
};

TEST_F(SuggestionsPageTest, eachKindHasItsCardInOrder) {
    ASSERT_THAT(page->cards(), SizeIs(2));
    EXPECT_EQ(row(0).accessibleName(), QStringLiteral("vite in shop"));
    EXPECT_EQ(row(1).accessibleName(), QStringLiteral("Notes"));
    EXPECT_EQ(row(1).accessibleDescription(), QStringLiteral("Unused for 2 hr, using 1 GB."));
    EXPECT_EQ(page->subtitle(), QStringLiteral("1.5 GB in 2 suggestions"));
    EXPECT_FALSE(isChosen(*page, "empty"));
}

TEST_F(SuggestionsPageTest, onlyWhatHasARuleOffersOne) {
    EXPECT_FALSE(widgetNamed<QPushButton>(row(0), "makeRule").isVisible());
    EXPECT_TRUE(widgetNamed<QPushButton>(row(1), "makeRule").isVisible());
    EXPECT_EQ(widgetNamed<QPushButton>(row(1), "makeRule").toolTip(),
              QStringLiteral("Adds a rule in Log Only, so it writes what it would do to Activity first"));
}

TEST_F(SuggestionsPageTest, makeRuleAddsTheRule) {
    const auto before = scene.model.rules->size();
    widgetNamed<QPushButton>(row(1), "makeRule").click();
    ASSERT_EQ(scene.model.rules->size(), before + 1);
    EXPECT_EQ(scene.model.rules->back().name, "Restart Notes when idle");
}

TEST_F(SuggestionsPageTest, theMainButtonBearsItsLabelAndActs) {
    auto& button = row(0).actionButton();
    EXPECT_EQ(button.text(), QStringLiteral("Stop"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Stop"));
    EXPECT_EQ(row(1).actionButton().text(), QStringLiteral("Restart"));
    button.click();
    turnLoop();
    EXPECT_THAT(page->cards(), SizeIs(1));
    EXPECT_EQ(page->subtitle(), QStringLiteral("1 GB in 1 suggestion"));
}

TEST_F(SuggestionsPageTest, whatDoesNotComeOffIsSaidUntilTheNextAct) {
    EXPECT_FALSE(widgetNamed<NoticeBar>(*page, "notice").isVisible());
    auto* menu = (openContextMenu(row(1)), openMenu());
    ASSERT_NE(menu, nullptr);
    trigger(*menu, QStringLiteral("Quit Notes"));
    ASSERT_TRUE(widgetNamed<NoticeBar>(*page, "notice").isVisible());
    EXPECT_EQ(widgetNamed<NoticeBar>(*page, "notice").sentence(), QStringLiteral("Notes was not running."));
    row(0).actionButton().click();
    EXPECT_FALSE(widgetNamed<NoticeBar>(*page, "notice").isVisible());
}

TEST_F(SuggestionsPageTest, theContextMenuOffersEverything) {
    openContextMenu(row(1));
    auto* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_THAT(titles(*menu), ElementsAre("Restart", "Quit Notes", "Make Rule", "", "Snooze for a Day", "Ignore"));
    trigger(*menu, QStringLiteral("Ignore"));
    EXPECT_EQ(scene.model.hiddenSuggestions->at("idle|app|com.example.Notes"), distantFuture);
    EXPECT_THAT(page->cards(), SizeIs(1));
    EXPECT_TRUE(widgetNamed<QPushButton>(*page, "showHidden").isEnabled());
}

TEST_F(SuggestionsPageTest, rowsStandStillWhileAMenuIsOpen) {
    openContextMenu(row(1));
    auto* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    scene.modelState->suggestions.set({});
    turnLoop();
    EXPECT_THAT(page->cards(), SizeIs(2));
    trigger(*menu, QStringLiteral("Snooze for a Day"));
    EXPECT_TRUE(scene.model.hiddenSuggestions->contains("idle|app|com.example.Notes"));
    EXPECT_TRUE(isChosen(*page, "empty"));
}

TEST_F(SuggestionsPageTest, hiddenOnesComeBackByTheButton) {
    EXPECT_FALSE(widgetNamed<QPushButton>(*page, "showHidden").isEnabled());
    EXPECT_EQ(widgetNamed<QPushButton>(*page, "showHidden").toolTip(),
              QStringLiteral("Show suggestions you snoozed or ignored"));
    scene.model.hide(server(), distantFuture);
    scene.model.hide(ofApp(), distantFuture);
    turnLoop();
    EXPECT_TRUE(isChosen(*page, "empty"));
    EXPECT_EQ(page->subtitle(), QString());
    widgetNamed<QPushButton>(*page, "showHidden").click();
    turnLoop();
    EXPECT_THAT(page->cards(), SizeIs(2));
}

TEST_F(SuggestionsPageTest, rowsKeepTheirWidgetsAcrossTicks) {
    auto* before = &row(1);
    before->actionButton().setFocus();
    auto next = ofApp();
    next.evidence = "Unused for 3 hr, using 1 GB.";
    scene.modelState->suggestions.set({next, server()});
    turnLoop();
    EXPECT_EQ(&row(1), before);
    EXPECT_EQ(before->accessibleDescription(), QStringLiteral("Unused for 3 hr, using 1 GB."));
}

TEST_F(SuggestionsPageTest, figuresStandInOneColumn) {
    EXPECT_EQ(row(0).actionButton().mapTo(page.get(), QPoint(row(0).actionButton().width(), 0)).x(),
              row(1).actionButton().mapTo(page.get(), QPoint(row(1).actionButton().width(), 0)).x());
}

TEST_F(SuggestionsPageTest, everyControlCanBeReachedByKeyboard) {
    EXPECT_NE(row(1).actionButton().focusPolicy() & Qt::TabFocus, 0);
    EXPECT_NE(widgetNamed<QPushButton>(row(1), "makeRule").focusPolicy() & Qt::TabFocus, 0);
    EXPECT_EQ(page->firstFocus(), &row(0).actionButton());
    type(row(1).actionButton(), Qt::Key_Return);
    turnLoop();
    EXPECT_THAT(page->cards(), SizeIs(1));
}

TEST_F(SuggestionsPageTest, aVeryLongNameLeavesTheButtonsTheirRoom) {
    auto hostile = ofApp();
    hostile.title = std::string(10'000, 'm') + "\n&<b>";
    scene.modelState->suggestions.set({hostile});
    turnLoop();
    const auto& button = row(0).actionButton();
    EXPECT_LE(button.mapTo(page.get(), QPoint(button.width(), 0)).x(), page->width());
    EXPECT_EQ(button.width(), button.sizeHint().width());
}

}  // namespace
}  // namespace tolvane::desktop
