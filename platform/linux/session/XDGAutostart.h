#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/LoginItem.h"
#include "platform/linux/settings/LinuxFolders.h"
#include "platform/linux/text/Environment.h"

namespace tolvane::linuxhost {

/// The login item as an autostart entry of the XDG rules: enabled or not registered, and never in need of approval. An
/// entry counts while it is not hidden or switched off and its program is there; the user's goes before those that
/// packages install. Main thread.
class XDGAutostart : public LoginItem {
public:
    struct Places {
        /// The user's folder "autostart".
        std::string folder;
        /// Those of packages, the most important first.
        std::vector<std::string> systemFolders;
        /// What is to be started.
        std::string program;
    };

    explicit XDGAutostart(Places places) : places_(std::move(places)) {}

    /// XDG_CONFIG_HOME and XDG_CONFIG_DIRS; the program is the one that runs now.
    static Places placesFor(const LinuxFolders& folders, const Environment& environment);

    LoginStatus status() const override;
    std::optional<std::string> enroll() override;
    std::optional<std::string> withdraw() override;
    /// These desktops have no common settings for it.
    void openSettings() override {}

private:
    std::string userFile() const;
    bool isInstalledForAll() const;
    std::optional<std::string> write(const std::string& entry) const;

    Places places_;
};

/// What the autostart entry adds to the program's name, so that it starts without its window.
inline constexpr const char* atLoginSwitch = "-atLogin YES";

}  // namespace tolvane::linuxhost
