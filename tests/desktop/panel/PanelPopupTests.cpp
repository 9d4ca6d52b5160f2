#include <gtest/gtest.h>

#include <QAbstractButton>

#include <QCheckBox>
#include <QPushButton>

#include "desktop/lists/ValueRows.h"
#include "desktop/panel/Hairline.h"
#include "desktop/panel/PanelPlace.h"
#include "desktop/panel/PanelPopup.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/program/DesktopWindows.h"
#include "tests/desktop/Find.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"
#include "tests/fakes/SampleLog.h"

namespace tolvane::desktop {
namespace {

constexpr QRect screen(0, 0, 1280, 770);
constexpr QSize size(340, 600);

TEST(PanelPlace, opensBelowAnIconAtTheTopAndAboveOneAtTheBottom) {
    EXPECT_EQ(panelPlace(size, QRect(600, 2, 20, 20), {}, QRect(0, 24, 1280, 776)), QRect(QPoint(439, 28), size));
    EXPECT_EQ(panelPlace(size, QRect(600, 773, 20, 20), {}, screen), QRect(QPoint(439, 166), size));
}

TEST(PanelPlace, neverLeavesTheScreen) {
    EXPECT_EQ(panelPlace(size, QRect(1254, 773, 22, 22), {}, screen).right(), 1275);
    EXPECT_EQ(panelPlace(size, QRect(0, 773, 22, 22), {}, screen).left(), 4);
    const auto tall = panelPlace(QSize(340, 2000), QRect(600, 773, 20, 20), {}, screen);
    EXPECT_EQ(tall.top(), 4) << "the head is what must be seen";
}

TEST(PanelPlace, isByThePointerWhereTheHostDoesNotTell) {
    EXPECT_EQ(panelPlace(size, QRect(), QPoint(700, 780), screen), QRect(QPoint(530, 166), size));
    EXPECT_EQ(panelPlace(size, QRect(), QPoint(1279, 780), screen).right(), 1275);
    EXPECT_EQ(panelPlace(size, QRect(), QPoint(2000, -50), screen).topLeft(), QPoint(936, 4));
}

class PanelTest : public ::testing::Test {
protected:
    PanelTest() : log(fakes::SampleLog::at(scene.model.now())) {}

    PanelPopup& open() {
        panel.openAt(QRect(100, 0, 20, 20));
        turnLoop();
        return panel;
    }
    int shownLines() {
        int count = 0;
        for (const auto* each : panel.findChildren<Hairline*>()) count += each->isVisible() ? 1 : 0;
        return count;
    }
    bool says(const QString& text) {
        for (const auto* each : panel.findChildren<QWidget*>()) {
            if (each->isVisible() && each->accessibleName() == text) return true;
        }
        return false;
    }

    SampleScene scene;
    fakes::SampleLog log;
    PanelPopup panel{scene.model, scene.look, "en_US"};
};

TEST_F(PanelTest, showsEveryBlock) {
    scene.modelState->suggestions.set(log.suggestions);
    scene.modelState->activity.set(log.activity);
    open();
    for (const auto* text : {"Memory", "CPU", "Largest right now", "Unused", "Suggestions", "Last rule activity",
                             "Terminated: node", "9 minutes ago", "Settings", "Quit Tolvane"}) {
        EXPECT_TRUE(says(text)) << text;
    }
    EXPECT_EQ(widgetNamed<QAbstractButton>(panel, "showSuggestions").text(), "Show All 5 Suggestions");
    EXPECT_EQ(panel.view().openButton().text(), "Open Tolvane");
    EXPECT_EQ(panel.width(), 340);
    EXPECT_EQ(shownLines(), 5);
}

TEST_F(PanelTest, leavesOutEmptyBlocksWithTheirDividers) {
    scene.modelState->suggestions.set({});
    scene.modelState->activity.set({});
    open();
    EXPECT_FALSE(says("Suggestions"));
    EXPECT_FALSE(says("Last rule activity"));
    EXPECT_EQ(shownLines(), 3);
}

TEST_F(PanelTest, escapeClosesIt) {
    type(open(), Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(PanelTest, returnOpensTheWindow) {
    const int before = *scene.model.windowRequest;
    type(open(), Qt::Key_Return);
    EXPECT_EQ(*scene.model.windowRequest, before + 1);
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(PanelTest, itsButtonsDoWhatTheySay) {
    scene.modelState->suggestions.set(log.suggestions);
    int settings = 0, quit = 0;
    QObject::connect(&panel, &PanelPopup::settingsWanted, &panel, [&] { ++settings; });
    QObject::connect(&panel, &PanelPopup::quitWanted, &panel, [&] { ++quit; });
    const int before = *scene.model.windowRequest;
    widgetNamed<QAbstractButton>(open(), "showSuggestions").click();
    EXPECT_EQ(*scene.model.section, AppSection::suggestions);
    EXPECT_EQ(*scene.model.windowRequest, before + 1);
    widgetNamed<QAbstractButton>(open(), "settings").click();
    EXPECT_EQ(settings, 1);
    EXPECT_FALSE(panel.isVisible());
    widgetNamed<QAbstractButton>(open(), "quit").click();
    EXPECT_EQ(quit, 1);
}

TEST_F(PanelTest, theCheckBoxAndTheModelFollowEachOther) {
    widgetNamed<QCheckBox>(open(), "pause").click();
    EXPECT_TRUE(*scene.model.rulesPaused);
    scene.model.pauseRules(false);
    turnLoop();
    EXPECT_FALSE(widgetNamed<QCheckBox>(panel, "pause").isChecked());
}

TEST_F(PanelTest, followsTheModelWhileItIsOpenOnly) {
    open();
    scene.modelState->activity.set(log.activity);
    turnLoop();
    EXPECT_TRUE(says("Terminated: node"));
    const int with = panel.height();
    scene.modelState->activity.set({});
    turnLoop();
    EXPECT_LT(panel.height(), with);
    panel.hide();
    scene.modelState->activity.set(log.activity);
    turnLoop();
    open();
    EXPECT_TRUE(says("Terminated: node"));
}

TEST_F(PanelTest, aClickOnTheIconClosesItAndDoesNotOpenItAgain) {
    panel.toggle(QRect(100, 0, 20, 20));
    EXPECT_TRUE(panel.isVisible());
    panel.hide();
    panel.toggle(QRect(100, 0, 20, 20));
    EXPECT_FALSE(panel.isVisible()) << "the same click closed it";
}

TEST_F(PanelTest, isAWindowThatCanBeSeen) {
    const DesktopWindows windows;
    EXPECT_FALSE(windows.anyVisible());
    open();
    EXPECT_TRUE(windows.anyVisible());
    panel.hide();
    turnLoop();
    EXPECT_FALSE(windows.anyVisible());
}

TEST_F(PanelTest, nothingIsCutOff) {
    scene.modelState->suggestions.set(log.suggestions);
    open();
    scene.modelState->activity.set(log.activity);
    turnLoop();
    for (const auto* rows : panel.findChildren<PanelRows*>()) EXPECT_EQ(rows->height(), rows->sizeHint().height());
    for (const auto* rows : panel.findChildren<ValueRows*>()) {
        EXPECT_EQ(rows->height(), rows->heightForWidth(rows->width()));
    }
    for (const auto* words : panel.findChildren<ParagraphLabel*>()) {
        EXPECT_EQ(words->height(), words->heightForWidth(words->width()));
    }
}

TEST_F(PanelTest, aTallPanelScrollsItsMiddle) {
    scene.modelState->suggestions.set(log.suggestions);
    scene.modelState->activity.set(log.activity);
    open();
    const int whole = panel.view().height();
    panel.view().fit(338, 500);
    EXPECT_EQ(panel.view().height(), 500);
    EXPECT_TRUE(panel.view().openButton().isVisible());
    panel.view().fit(338, 5000);
    EXPECT_GE(panel.view().height(), whole);
}

}  // namespace
}  // namespace tolvane::desktop
