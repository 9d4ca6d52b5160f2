#include "app/screens/settings/SettingsView.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/preferences/AppPreferences.h"

namespace tolvane {

namespace {

using Kind = SettingsRow::Kind;
using Control = SettingsControl;

struct Interval {
    std::int64_t seconds;
    std::string_view label;
};
constexpr std::array<Interval, 3> intervals = {{
    {2, "Every 2 seconds"},
    {5, "Every 5 seconds"},
    {10, "Every 10 seconds"},
}};

/// The stored bool behind a toggle; null for other controls.
const Preference<bool>* preferenceOf(Control control) {
    switch (control) {
        case Control::showTrayIcon:
            return &AppPreferences::showTrayIcon;
        case Control::notifyOnAction:
            return &AppPreferences::notifyOnAction;
        case Control::notifyAboutSuggestions:
            return &AppPreferences::notifyAboutSuggestions;
        case Control::warnSwapGrowth:
            return &AppPreferences::warnSwapGrowth;
        default:
            return nullptr;
    }
}

SettingsRow toggle(const Preferences& preferences, Control control, std::string label, std::string explanation = {}) {
    return {.kind = Kind::toggle,
            .control = control,
            .label = std::move(label),
            .explanation = std::move(explanation),
            .isOn = preferenceOf(control)->in(preferences)};
}

SettingsRow error(Control control, const std::string& words) {
    return {.kind = Kind::error, .control = control, .label = words};
}

SettingsRow intervalPicker(const Preferences& preferences) {
    SettingsRow row{
        .kind = Kind::picker,
        .control = Control::openInterval,
        .label = "Refresh while a window is open",
        .explanation = "With no window open, Tolvane checks once a minute, and at once under memory pressure."};
    for (const auto& each : intervals) row.choices.emplace_back(each.label);
    const auto found = std::ranges::find(intervals, AppPreferences::openInterval.in(preferences), &Interval::seconds);
    if (found != intervals.end()) row.choice = static_cast<std::size_t>(found - intervals.begin());
    return row;
}

}  // namespace

SettingsView::SettingsView(AppModel& model) : model_(model) {}

void SettingsView::appear() { readLogin(); }

void SettingsView::readLogin() {
    auto* const item = model_.loginItem();
    loginStatus_ = item ? item->status() : LoginStatus::notFound;
}

std::vector<SettingsSection> SettingsView::sections() const {
    return {loginSection(), tickSection(),
            backupSection(model_.backupPath().has_value(), *model_.backupToSyncFolder, *model_.backupError)};
}

SettingsSection SettingsView::loginSection() const {
    SettingsSection section{.footer = "Rules only run while Tolvane is open."};
    section.rows.push_back({.kind = Kind::toggle,
                            .control = Control::openAtLogin,
                            .label = "Open at login",
                            .isOn = loginStatus_ == LoginStatus::enabled,
                            .isEnabled = model_.loginItem() != nullptr});
    if (loginStatus_ == LoginStatus::requiresApproval) {
        section.rows.push_back({.kind = Kind::labelledButton,
                                .control = Control::loginItems,
                                .label = "Waiting for approval",
                                .explanation = "Allow Tolvane in System Settings to let rules run after you log in.",
                                .button = "Open Login Items"});
    }
    if (loginError_) section.rows.push_back(error(Control::loginError, *loginError_));
    section.rows.push_back(toggle(model_.preferences(), Control::showTrayIcon, "Show in menu bar"));
    return section;
}

SettingsSection SettingsView::tickSection() const {
    const Preferences& preferences = model_.preferences();
    return {.rows = {intervalPicker(preferences),
                     toggle(preferences, Control::notifyOnAction, "Notify me when a rule acts"),
                     toggle(preferences, Control::notifyAboutSuggestions, "Notify me about suggestions",
                            "At most once a day, after 5 minutes of memory pressure, when they could free 1 GB."),
                     toggle(preferences, Control::warnSwapGrowth, "Warn me when swap grows fast",
                            "At most once an hour, when swap grows by 512 MB in 15 minutes.")}};
}

SettingsSection SettingsView::backupSection(bool possible, bool wanted, const std::optional<std::string>& failure) {
    SettingsSection section{
        .rows = {{.kind = Kind::toggle,
                  .control = Control::backUp,
                  .label = "Back up rules to iCloud Drive",
                  .isOn = wanted,
                  .isEnabled = possible},
                 {.kind = Kind::button,
                  .control = Control::restore,
                  .button = "Restore Rules from iCloud Drive…",
                  .isEnabled = possible}},
        .footer = possible ? "Saved to Tolvane/Rules.tolvanerules in iCloud Drive whenever a rule changes. Restoring "
                             "replaces the rules on this Mac."
                           : "Turn on iCloud Drive in System Settings to back up your rules."};
    if (failure) section.rows.push_back(error(Control::backupError, *failure));
    return section;
}

void SettingsView::setOn(Control control, bool on) {
    if (control == Control::openAtLogin) return setLogin(on);
    if (control == Control::backUp) return model_.setBackupToSyncFolder(on);
    if (const auto* preference = preferenceOf(control)) preference->store(model_.preferences(), on);
}

/// Reads the status back, so a toggle that failed shows the actual state.
void SettingsView::setLogin(bool on) {
    auto* const item = model_.loginItem();
    if (!item) return;
    loginError_ = on ? item->enroll() : item->withdraw();
    readLogin();
}

void SettingsView::press(Control control) {
    if (control == Control::restore) confirmRestore_ = true;
    if (control == Control::loginItems && model_.loginItem()) model_.loginItem()->openSettings();
}

void SettingsView::choose(Control control, std::size_t choice) {
    if (control != Control::openInterval || choice >= intervals.size()) return;
    AppPreferences::openInterval.store(model_.preferences(), intervals[choice].seconds);
}

std::optional<Question> SettingsView::restoreQuestion() const {
    if (!confirmRestore_) return std::nullopt;
    return Question{.title = "Replace the rules on this Mac with the iCloud Drive backup?", .action = "Replace Rules"};
}

void SettingsView::confirmRestore() {
    confirmRestore_ = false;
    model_.restoreBackup();
}

}  // namespace tolvane
