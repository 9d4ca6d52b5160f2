#include "desktop/settings/SettingsWindow.h"

#include <gtest/gtest.h>

#include <QLayout>
#include <QPushButton>

#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/PopupPicker.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/parts/Switch.h"
#include "desktop/settings/SettingsRowWidget.h"
#include "tests/desktop/Pointer.h"
#include "tests/desktop/SampleScene.h"

namespace tolvane::desktop {
namespace {

using Control = SettingsControl;

class SettingsWindowTest : public ::testing::Test {
protected:
    void open() {
        window.bringForward();
        turnLoop();
    }

    SampleScene scene;
    SettingsWindow window{scene.model, scene.look};
};

TEST_F(SettingsWindowTest, isFourHundredAndSixtyWide) {
    open();
    EXPECT_EQ(window.width(), 460);
    EXPECT_EQ(window.windowTitle(), "Settings");
    EXPECT_EQ(window.footer(0), "Rules only run while Tolvane is open.");
}

TEST_F(SettingsWindowTest, switchesStoreTheirChoiceAtOnce) {
    open();
    auto* toggle = window.row(Control::notifyOnAction)->toggle();
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_EQ(toggle->accessibleName(), "Notify me when a rule acts");
    toggle->click();
    EXPECT_FALSE(std::get<bool>(scene.fake.world->preferences.at("notifyOnAction")));
}

TEST_F(SettingsWindowTest, tellsAboutTheIconInTheTray) {
    open();
    std::vector<bool> wanted;
    QObject::connect(&window, &SettingsWindow::trayIconWanted, &window, [&](bool on) { wanted.push_back(on); });
    window.row(Control::showTrayIcon)->toggle()->click();
    turnLoop();
    window.row(Control::showTrayIcon)->toggle()->click();
    EXPECT_EQ(wanted, (std::vector{false, true}));
}

TEST_F(SettingsWindowTest, theIntervalIsPicked) {
    open();
    auto* picker = window.row(Control::openInterval)->picker();
    EXPECT_EQ(picker->currentText(), "Every 5 seconds");
    emit picker->activated(0);
    EXPECT_EQ(std::get<std::int64_t>(scene.fake.world->preferences.at("openInterval")), 2);
}

TEST_F(SettingsWindowTest, anotherIntervalSelectsNone) {
    scene.fake.world->preferences["openInterval"] = std::int64_t{7};
    open();
    EXPECT_EQ(window.row(Control::openInterval)->picker()->currentIndex(), -1);
}

TEST_F(SettingsWindowTest, aLoginItemThatFailsSaysWhyAndFallsBack) {
    scene.fake.world->loginError = "The folder is read-only.";
    open();
    window.row(Control::openAtLogin)->toggle()->click();
    turnLoop();
    EXPECT_FALSE(window.row(Control::openAtLogin)->toggle()->isChecked());
    ASSERT_NE(window.row(Control::loginError), nullptr);
    scene.fake.world->loginError.reset();
    window.row(Control::openAtLogin)->toggle()->click();
    turnLoop();
    EXPECT_TRUE(window.row(Control::openAtLogin)->toggle()->isChecked());
    EXPECT_EQ(window.row(Control::loginError), nullptr);
}

TEST_F(SettingsWindowTest, anApprovalThatIsMissingShowsWhenTheWindowOpens) {
    EXPECT_EQ(window.row(Control::loginItems), nullptr);
    scene.fake.world->loginStatus = LoginStatus::requiresApproval;
    open();
    auto* row = window.row(Control::loginItems);
    ASSERT_NE(row, nullptr);
    row->button()->click();
    turnLoop();
    EXPECT_EQ(scene.fake.world->timesAsked("openSettings"), 1U);
}

TEST_F(SettingsWindowTest, aFailedBackupShowsWhileTheWindowIsOpen) {
    open();
    const int before = window.height();
    scene.modelState->backupError.set("The disk is full.");
    EXPECT_NE(window.row(Control::backupError), nullptr);
    EXPECT_GE(window.height(), before);
    scene.modelState->backupError.set(std::nullopt);
    EXPECT_EQ(window.row(Control::backupError), nullptr);
}

TEST_F(SettingsWindowTest, restoringAsksFirst) {
    open();
    emit window.row(Control::restore)->pressed();
    turnLoop();
    auto* dialog = window.findChild<QuestionDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->accessibleName(), "Replace the rules on this Mac with the iCloud Drive backup?");
    EXPECT_EQ(dialog->action().text(), "Replace Rules");
    type(*dialog, Qt::Key_Escape);
    turnLoop();
    EXPECT_EQ(window.findChild<QuestionDialog*>(), nullptr);
}

TEST_F(SettingsWindowTest, nothingIsCutOff) {
    scene.fake.world->loginStatus = LoginStatus::requiresApproval;
    scene.fake.world->loginError = std::string(300, 'w');
    open();
    window.row(Control::openAtLogin)->toggle()->click();
    turnLoop();
    for (const auto* row : window.findChildren<SettingsRowWidget*>()) {
        EXPECT_GE(row->height(), row->layout()->totalHeightForWidth(row->width()));
        for (const auto* words : row->findChildren<ParagraphLabel*>()) {
            EXPECT_GE(words->height(), words->heightForWidth(words->width())) << qPrintable(words->accessibleName());
        }
    }
}

TEST_F(SettingsWindowTest, escapeCloses) {
    open();
    type(window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace tolvane::desktop
