#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/Question.h"
#include "platform/LoginItem.h"

namespace tolvane {

/// Identifies what a row of the settings changes or does.
enum class SettingsControl {
    openAtLogin,
    loginItems,
    loginError,
    showTrayIcon,
    openInterval,
    notifyOnAction,
    notifyAboutSuggestions,
    warnSwapGrowth,
    backUp,
    restore,
    backupError,
};

/// One row of the form.
struct SettingsRow {
    enum class Kind { toggle, button, labelledButton, picker, error };

    Kind kind = Kind::toggle;
    SettingsControl control = SettingsControl::openAtLogin;
    /// An error has nothing else.
    std::string label;
    /// Smaller text below the label; often empty.
    std::string explanation;
    std::string button;
    bool isOn = false;
    bool isEnabled = true;
    /// A picker's entries, and the selected one; nullopt when another value is stored.
    std::vector<std::string> choices;
    std::optional<std::size_t> choice;

    bool operator==(const SettingsRow&) const = default;
};

struct SettingsSection {
    std::vector<SettingsRow> rows;
    /// Text below the card; may be empty.
    std::string footer;

    bool operator==(const SettingsSection&) const = default;
};

/// The settings form. Every choice is stored at once. Main thread.
class SettingsView {
public:
    static constexpr std::string_view title = "Settings";
    /// Device-independent pixels.
    static constexpr int width = 460;

    /// `model` outlives the view.
    explicit SettingsView(AppModel& model);

    /// Call when the form appears: reads what may have changed outside the program.
    void appear();
    std::vector<SettingsSection> sections() const;
    void setOn(SettingsControl control, bool on);
    void press(SettingsControl control);
    /// `choice` is an index into the picker's entries.
    void choose(SettingsControl control, std::size_t choice);

    /// Set while the question is open.
    std::optional<Question> restoreQuestion() const;
    void cancelRestore() { confirmRestore_ = false; }
    void confirmRestore();

    /// The backup section. `possible` means that there is a folder to back up to.
    static SettingsSection backupSection(bool possible, bool wanted, const std::optional<std::string>& failure);

private:
    SettingsSection loginSection() const;
    SettingsSection tickSection() const;
    void setLogin(bool on);
    void readLogin();

    AppModel& model_;
    bool confirmRestore_ = false;
    LoginStatus loginStatus_ = LoginStatus::notRegistered;
    std::optional<std::string> loginError_;
};

}  // namespace tolvane
