#include "app/screens/settings/SettingsView.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Control = SettingsControl;
using Kind = SettingsRow::Kind;

struct SettingsViewTest : ModelTest {
    SettingsViewTest() { startStill(); }

    SettingsView view() {
        SettingsView made(*model);
        made.appear();
        return made;
    }
    static std::vector<Control> controls(const SettingsSection& section) {
        std::vector<Control> controls;
        for (const auto& row : section.rows) controls.push_back(row.control);
        return controls;
    }
    static std::optional<SettingsRow> row(const SettingsView& view, Control control) {
        for (const auto& section : view.sections()) {
            const auto found = std::ranges::find(section.rows, control, &SettingsRow::control);
            if (found != section.rows.end()) return *found;
        }
        return std::nullopt;
    }
    bool stored(const char* key) const { return std::get<bool>(world.preferences.at(key)); }
};

TEST_F(SettingsViewTest, hasThreeSections) {
    const auto sections = view().sections();
    ASSERT_EQ(sections.size(), 3U);
    EXPECT_THAT(controls(sections[0]), ElementsAre(Control::openAtLogin, Control::showTrayIcon));
    EXPECT_EQ(sections[0].footer, "Rules only run while Tolvane is open.");
    EXPECT_THAT(controls(sections[1]), ElementsAre(Control::openInterval, Control::notifyOnAction,
                                                   Control::notifyAboutSuggestions, Control::warnSwapGrowth));
    EXPECT_EQ(sections[1].footer, "");
    EXPECT_THAT(controls(sections[2]), ElementsAre(Control::backUp, Control::restore));
    EXPECT_EQ(SettingsView::width, 460);
}

TEST_F(SettingsViewTest, sayWhatTheyDo) {
    const auto shown = view();
    EXPECT_EQ(row(shown, Control::openAtLogin)->label, "Open at login");
    EXPECT_EQ(row(shown, Control::showTrayIcon)->label, "Show in menu bar");
    EXPECT_EQ(row(shown, Control::openInterval)->label, "Refresh while a window is open");
    EXPECT_EQ(row(shown, Control::openInterval)->explanation,
              "With no window open, Tolvane checks once a minute, and at once under memory pressure.");
    EXPECT_EQ(row(shown, Control::notifyOnAction)->label, "Notify me when a rule acts");
    EXPECT_EQ(row(shown, Control::notifyOnAction)->explanation, "");
    EXPECT_EQ(row(shown, Control::notifyAboutSuggestions)->label, "Notify me about suggestions");
    EXPECT_EQ(row(shown, Control::notifyAboutSuggestions)->explanation,
              "At most once a day, after 5 minutes of memory pressure, when they could free 1 GB.");
    EXPECT_EQ(row(shown, Control::warnSwapGrowth)->label, "Warn me when swap grows fast");
    EXPECT_EQ(row(shown, Control::warnSwapGrowth)->explanation,
              "At most once an hour, when swap grows by 512 MB in 15 minutes.");
    EXPECT_EQ(row(shown, Control::backUp)->label, "Back up rules to iCloud Drive");
    EXPECT_EQ(row(shown, Control::restore)->button, "Restore Rules from iCloud Drive…");
}

TEST_F(SettingsViewTest, everyTogglesDefaultIsOnAndItsChoiceIsStored) {
    auto shown = view();
    const std::pair<Control, const char*> toggles[] = {{Control::showTrayIcon, "showInMenuBar"},
                                                       {Control::notifyOnAction, "notifyOnAction"},
                                                       {Control::notifyAboutSuggestions, "notifyAboutSuggestions"},
                                                       {Control::warnSwapGrowth, "warnSwapGrowth"}};
    for (const auto& [control, key] : toggles) {
        EXPECT_EQ(row(shown, control)->kind, Kind::toggle);
        EXPECT_TRUE(row(shown, control)->isOn) << key;
        shown.setOn(control, false);
        EXPECT_FALSE(row(shown, control)->isOn) << key;
        EXPECT_FALSE(stored(key));
        shown.setOn(control, true);
        EXPECT_TRUE(stored(key));
    }
}

TEST_F(SettingsViewTest, offersThreeIntervals) {
    auto shown = view();
    const auto picker = row(shown, Control::openInterval);
    EXPECT_EQ(picker->kind, Kind::picker);
    EXPECT_THAT(picker->choices, ElementsAre("Every 2 seconds", "Every 5 seconds", "Every 10 seconds"));
    EXPECT_EQ(picker->choice, 1U);
    shown.choose(Control::openInterval, 2);
    EXPECT_EQ(std::get<std::int64_t>(world.preferences.at("openInterval")), 10);
    EXPECT_EQ(row(shown, Control::openInterval)->choice, 2U);
    shown.choose(Control::openInterval, 3);
    EXPECT_EQ(row(shown, Control::openInterval)->choice, 2U);
}

TEST_F(SettingsViewTest, anIntervalOfTheUsersOwnSelectsNone) {
    world.preferences["openInterval"] = std::int64_t{7};
    EXPECT_EQ(row(view(), Control::openInterval)->choice, std::nullopt);
}

TEST_F(SettingsViewTest, turnsTheLoginItemOnAndOff) {
    auto shown = view();
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isOn);
    shown.setOn(Control::openAtLogin, true);
    EXPECT_EQ(world.loginStatus, LoginStatus::enabled);
    EXPECT_TRUE(row(shown, Control::openAtLogin)->isOn);
    shown.setOn(Control::openAtLogin, false);
    EXPECT_EQ(world.loginStatus, LoginStatus::notRegistered);
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isOn);
}

TEST_F(SettingsViewTest, aLoginItemThatWaitsForApprovalIsOffAndSaysSo) {
    world.loginStatus = LoginStatus::requiresApproval;
    auto shown = view();
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isOn);
    EXPECT_THAT(controls(shown.sections()[0]),
                ElementsAre(Control::openAtLogin, Control::loginItems, Control::showTrayIcon));
    const auto waiting = row(shown, Control::loginItems);
    EXPECT_EQ(waiting->label, "Waiting for approval");
    EXPECT_EQ(waiting->explanation, "Allow Tolvane in System Settings to let rules run after you log in.");
    EXPECT_EQ(waiting->button, "Open Login Items");
    shown.press(Control::loginItems);
    EXPECT_EQ(world.timesAsked("openSettings"), 1U);
}

TEST_F(SettingsViewTest, aToggleThatFailedFallsBackAndSaysWhy) {
    world.loginError = "The folder is read-only.";
    auto shown = view();
    shown.setOn(Control::openAtLogin, true);
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isOn);
    EXPECT_EQ(row(shown, Control::loginError)->label, "The folder is read-only.");
    EXPECT_THAT(controls(shown.sections()[0]),
                ElementsAre(Control::openAtLogin, Control::loginError, Control::showTrayIcon));
    world.loginStatus = LoginStatus::enabled;
    shown.appear();
    EXPECT_TRUE(row(shown, Control::loginError)) << "it stays through a change made outside";
    world.loginError.reset();
    shown.setOn(Control::openAtLogin, true);
    EXPECT_FALSE(row(shown, Control::loginError)) << "a toggle that works clears it";
}

TEST_F(SettingsViewTest, theStatusIsReadWhenTheFormAppears) {
    auto shown = view();
    world.loginStatus = LoginStatus::enabled;
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isOn);
    shown.appear();
    EXPECT_TRUE(row(shown, Control::openAtLogin)->isOn);
}

TEST_F(SettingsViewTest, aHostWithoutLoginItemsHasTheToggleOff) {
    fake.host.loginItem.reset();
    auto shown = view();
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isEnabled);
    shown.setOn(Control::openAtLogin, true);
    EXPECT_FALSE(row(shown, Control::openAtLogin)->isOn);
}

TEST_F(SettingsViewTest, withoutAFolderThatSyncsThereIsNoBackup) {
    const auto section = SettingsView::backupSection(false, false, std::nullopt);
    EXPECT_FALSE(section.rows[0].isEnabled);
    EXPECT_FALSE(section.rows[1].isEnabled);
    EXPECT_EQ(section.footer, "Turn on iCloud Drive in System Settings to back up your rules.");
}

TEST_F(SettingsViewTest, withAFolderThatSyncsThereIsOne) {
    const auto section = SettingsView::backupSection(true, true, std::nullopt);
    EXPECT_TRUE(section.rows[0].isEnabled);
    EXPECT_TRUE(section.rows[0].isOn);
    EXPECT_TRUE(section.rows[1].isEnabled);
    EXPECT_EQ(
        section.footer,
        "Saved to Tolvane/Rules.tolvanerules in iCloud Drive whenever a rule changes. Restoring replaces the rules "
        "on this Mac.");
}

TEST_F(SettingsViewTest, tellsWhyABackupFailed) {
    const auto section = SettingsView::backupSection(true, true, "The disk is full.");
    EXPECT_THAT(controls(section), ElementsAre(Control::backUp, Control::restore, Control::backupError));
    EXPECT_EQ(section.rows[2].kind, Kind::error);
    EXPECT_EQ(section.rows[2].label, "The disk is full.");
}

TEST_F(SettingsViewTest, theBackupSwitchIsTheModels) {
    auto shown = view();
    shown.setOn(Control::backUp, true);
    EXPECT_TRUE(*model->backupToSyncFolder);
    EXPECT_TRUE(row(shown, Control::backUp)->isOn);
    modelState->backupError.set("Gone");
    EXPECT_EQ(row(shown, Control::backupError)->label, "Gone");
}

TEST_F(SettingsViewTest, restoringAsksFirst) {
    auto shown = view();
    EXPECT_EQ(shown.restoreQuestion(), std::nullopt);
    shown.press(Control::restore);
    EXPECT_EQ(shown.restoreQuestion(),
              (Question{"Replace the rules on this Mac with the iCloud Drive backup?", "", "Replace Rules"}));
    shown.cancelRestore();
    EXPECT_EQ(shown.restoreQuestion(), std::nullopt);
    shown.press(Control::restore);
    shown.confirmRestore();
    EXPECT_EQ(shown.restoreQuestion(), std::nullopt);
}

}  // namespace
}  // namespace tolvane
