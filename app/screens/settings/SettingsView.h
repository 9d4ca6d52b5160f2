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

/// What a row of the settings changes or does.
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
    /// An error's is all that it has.
    std::string label;
    /// Smaller, below the label; often empty.
    std::string explanation;
    std::string button;
    bool isOn = false;
    bool isEnabled = true;
    /// A picker's words, and which of them holds; none when another value is stored.
    std::vector<std::string> choices;
    std::optional<std::size_t> choice;

    bool operator==(const SettingsRow&) const = default;
};

struct SettingsSection {
    std::vector<SettingsRow> rows;
    /// Below its card; may be empty.
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

    /// The form came into view: reads what may have changed outside.
    void appear();
    std::vector<SettingsSection> sections() const;
    void setOn(SettingsControl control, bool on);
    void press(SettingsControl control);
    /// `choice` is one of the picker's.
    void choose(SettingsControl control, std::size_t choice);

    /// While it is open.
    std::optional<Question> restoreQuestion() const;
    void cancelRestore() { confirmRestore_ = false; }
    void confirmRestore();

    /// The section on the backup, given whether there is a place for it and what failed.
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
