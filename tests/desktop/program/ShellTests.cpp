#include "desktop/program/Shell.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QMenu>
#include <QPointer>

#include "desktop/parts/IconButton.h"
#include "desktop/processes/ProcessesPage.h"
#include "desktop/program/Screens.h"
#include "desktop/settings/SettingsWindow.h"
#include "desktop/window/WindowMenu.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

class ShellTest : public ::testing::Test {
protected:
    Shell& make(bool secondStartOpens) {
        shell = std::make_unique<Shell>(scene.model, *scene.fake.host.trays, scene.look, scene.state,
                                        allScreens(scene.model, scene.look, scene.state, "en_US"), secondStartOpens);
        QObject::connect(shell.get(), &Shell::quitWanted, shell.get(), [this] { ++quits; });
        return *shell;
    }
    QAction* command(const char* text) {
        for (auto* action : shell->window()->actions()) {
            if (action->text() == text) return action;
        }
        return nullptr;
    }

    SampleScene scene;
    std::unique_ptr<Shell> shell;
    int quits = 0;
};

TEST_F(ShellTest, opensTheWindowAtStart) {
    make(true).start(false);
    EXPECT_TRUE(shell->isWindowShown());
}

TEST_F(ShellTest, aStartByTheSessionWaitsForATrayAndOpensTheWindowWithoutOne) {
    make(true).start(true);
    EXPECT_FALSE(shell->isWindowShown());
    scene.fake.clock->advance(Seconds{10});
    EXPECT_FALSE(shell->isWindowShown());
    scene.fake.clock->advance(Seconds{10});
    EXPECT_TRUE(shell->isWindowShown());
}

TEST_F(ShellTest, aStartByTheSessionLivesInATrayThatIsThereAlready) {
    scene.fake.world->hasTray = true;
    make(true).start(true);
    scene.fake.clock->advance(Seconds{60});
    EXPECT_FALSE(shell->isWindowShown());
}

TEST_F(ShellTest, aTrayThatComesInTimeKeepsTheWindowClosed) {
    make(true).start(true);
    scene.fake.clock->advance(Seconds{10});
    scene.fake.world->setTray(true);
    EXPECT_TRUE(shell->tray().isShown());
    scene.fake.clock->advance(Seconds{60});
    EXPECT_FALSE(shell->isWindowShown());
}

TEST_F(ShellTest, theIconGoesAndComesWithTheTray) {
    scene.fake.world->hasTray = true;
    make(true).start(false);
    EXPECT_TRUE(shell->tray().isShown());
    int changes = 0;
    QObject::connect(&shell->tray(), &Tray::shownChanged, shell.get(), [&] { ++changes; });
    scene.fake.world->setTray(false);
    EXPECT_FALSE(shell->tray().isShown());
    scene.fake.world->setTray(true);
    EXPECT_TRUE(shell->tray().isShown());
    EXPECT_EQ(changes, 2);
}

TEST_F(ShellTest, theModelCanAskForTheWindowBeforeThereIsOne) {
    make(true).start(true);
    scene.model.open(AppSection::activity);
    EXPECT_TRUE(shell->isWindowShown());
    EXPECT_EQ(*scene.model.section, AppSection::activity);
}

TEST_F(ShellTest, aClosedWindowComesBackAtTheSectionItHad) {
    make(true).start(false);
    scene.model.show(AppSection::stats);
    shell->window()->close();
    EXPECT_FALSE(shell->isWindowShown());
    EXPECT_EQ(quits, 0);
    scene.model.openWindow();
    EXPECT_TRUE(shell->isWindowShown());
    EXPECT_EQ(*scene.model.section, AppSection::stats);
}

TEST_F(ShellTest, aClosedWindowLetsGoOfAllThatItHeld) {
    make(true).start(false);
    const QPointer<MainWindow> window = shell->window();
    int gone = 0;
    QObject::connect(shell.get(), &Shell::windowGone, shell.get(), [&] { ++gone; });
    window->close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(gone, 1);
    shell->openWindow();
    EXPECT_TRUE(shell->isWindowShown());
}

TEST_F(ShellTest, aWindowThatIsOpenedAgainAtOnceStays) {
    make(true).start(false);
    const auto* window = shell->window();
    int gone = 0;
    QObject::connect(shell.get(), &Shell::windowGone, shell.get(), [&] { ++gone; });
    shell->window()->close();
    shell->openWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(shell->window(), window);
    EXPECT_TRUE(shell->isWindowShown());
    EXPECT_EQ(gone, 0);
}

TEST_F(ShellTest, aClosedWindowWithAQuestionOpenStays) {
    make(true).start(false);
    const QPointer<MainWindow> window = shell->window();
    (new QDialog(window))->show();
    window->close();
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.isNull());
}

TEST_F(ShellTest, everySectionOfAWindowThatIsGoneComesBack) {
    make(true).start(false);
    for (const auto section : {AppSection::processes, AppSection::projects, AppSection::suggestions,
                               AppSection::history, AppSection::stats, AppSection::rules, AppSection::activity}) {
        scene.model.open(section);
        QCoreApplication::processEvents();
        shell->window()->close();
        QCoreApplication::processEvents();
        ASSERT_EQ(shell->window(), nullptr);
        scene.showRows(scene.model.snapshot->rows);
    }
    shell->openWindow();
    EXPECT_EQ(*scene.model.section, AppSection::activity);
    EXPECT_TRUE(shell->isWindowShown());
}

TEST_F(ShellTest, theTableOfAWindowThatComesBackIsArrangedAsItWasLeft) {
    make(true).start(false);
    auto* page = shell->window()->findChild<ProcessesPage*>();
    const auto group = [&] { return page->table().model()->index(0, 0); };
    emit page->table().headClicked(0);
    page->table().expand(group());
    ASSERT_TRUE(page->table().isExpanded(group()));
    const auto order = page->view().sortOrder();
    const auto first = page->table().tableModel().line(group())->id;
    shell->window()->close();
    QCoreApplication::processEvents();
    shell->openWindow();
    page = shell->window()->findChild<ProcessesPage*>();
    EXPECT_EQ(page->view().sortOrder(), order);
    EXPECT_EQ(page->table().tableModel().line(group())->id, first);
    EXPECT_TRUE(page->table().isExpanded(group()));
    EXPECT_FALSE(page->table().isExpanded(page->table().model()->index(1, 0)));
}

TEST_F(ShellTest, withoutATrayItSaysOnceWhereItWent) {
    make(true).start(false);
    for (int turn = 0; turn < 2; ++turn) {
        shell->window()->close();
        shell->openWindow();
    }
    ASSERT_EQ(scene.fake.world->notifications.size(), 1U);
    EXPECT_EQ(scene.fake.world->notifications[0].title, "Tolvane is still running");
    EXPECT_EQ(
        scene.fake.world->notifications[0].body,
        "It has no icon on this desktop. Start Tolvane again to open its window, and press Ctrl+Q there to quit.");
    EXPECT_EQ(scene.fake.world->notifications[0].section, std::nullopt);
}

TEST_F(ShellTest, whereNothingLeadsBackClosingQuits) {
    make(false).start(false);
    shell->window()->close();
    EXPECT_EQ(quits, 1);
    EXPECT_TRUE(scene.fake.world->notifications.empty());
}

TEST_F(ShellTest, aHostWithoutNotificationsIsNoHindrance) {
    scene.fake.host.notifications.reset();
    make(true).start(false);
    shell->window()->close();
    EXPECT_EQ(quits, 0);
}

TEST_F(ShellTest, theMenuHoldsTheCommandsOfTheWindow) {
    make(true).start(false);
    QStringList texts;
    for (const auto* action : shell->window()->findChild<WindowMenu*>()->menu().actions()) texts << action->text();
    EXPECT_EQ(texts.join('|'),
              QString::fromUtf8("Import Rules…|Export Rules…||Settings|Keyboard Shortcuts||Quit Tolvane"));
}

TEST_F(ShellTest, importingIsAlwaysPossibleAndExportingWithRulesAlone) {
    scene.modelState->rules.set({});
    make(true).start(false);
    EXPECT_TRUE(command("Import Rules…")->isEnabled());
    EXPECT_FALSE(command("Export Rules…")->isEnabled());
    scene.modelState->rules.set({Rule{.name = "A"}, Rule{.name = "B"}});
    EXPECT_TRUE(command("Export Rules…")->isEnabled());
    command("Export Rules…")->trigger();
    EXPECT_EQ(*scene.model.exporting, *scene.model.rules);
    command("Import Rules…")->trigger();
    EXPECT_TRUE(*scene.model.importing);
}

TEST_F(ShellTest, theKeyboardReachesSettingsAndTheEnd) {
    make(true).start(false);
    EXPECT_EQ(command("Settings")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    command("Settings")->trigger();
    ASSERT_NE(shell->settings(), nullptr);
    EXPECT_TRUE(shell->settings()->isVisible());
    EXPECT_EQ(command("Quit Tolvane")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    command("Quit Tolvane")->trigger();
    EXPECT_EQ(quits, 1);
}

TEST_F(ShellTest, hidingTheIconTakesEffectAtOnce) {
    make(true).start(false);
    shell->openSettings();
    emit shell->settings()->trayIconWanted(false);
    EXPECT_FALSE(shell->tray().isShown());
}

TEST_F(ShellTest, thePanelOpensTheWindowAndTheSettings) {
    make(true).start(true);
    shell->togglePanel({});
    ASSERT_NE(shell->panel(), nullptr);
    emit shell->panel()->settingsWanted();
    EXPECT_TRUE(shell->settings()->isVisible());
    emit shell->panel()->view().openWanted();
    EXPECT_TRUE(shell->isWindowShown());
}

TEST_F(ShellTest, theIconIsDrawnAtEverySizeOfTrays) {
    for (const bool tight : {false, true}) {
        const auto icon = Tray::iconFor(tight, scene.look);
        EXPECT_EQ(icon.pixmap(22, 22).width(), 22);
    }
    EXPECT_NE(Tray::iconFor(true, scene.look).pixmap(22).toImage(),
              Tray::iconFor(false, scene.look).pixmap(22).toImage());
}

}  // namespace
}  // namespace tolvane::desktop
