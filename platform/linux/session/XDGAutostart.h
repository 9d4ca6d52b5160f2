#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/LoginItem.h"
#include "platform/linux/settings/LinuxFolders.h"
#include "platform/linux/text/Environment.h"

namespace tolvane::linuxhost {

/// The login item as an XDG autostart entry: enabled or not registered, never awaiting approval. An entry counts unless
/// it is hidden, switched off, or its program is missing; the user's own takes precedence over those of packages. Main
/// thread.
class XDGAutostart : public LoginItem {
public:
    struct Places {
        /// The user's "autostart" folder.
        std::string folder;
        /// The "autostart" folders of packages, the most important first.
        std::vector<std::string> systemFolders;
        /// The program to start.
        std::string program;
    };

    explicit XDGAutostart(Places places) : places_(std::move(places)) {}

    /// From XDG_CONFIG_HOME and XDG_CONFIG_DIRS; the program is the running one.
    static Places placesFor(const LinuxFolders& folders, const Environment& environment);

    LoginStatus status() const override;
    std::optional<std::string> enroll() override;
    std::optional<std::string> withdraw() override;
    /// Linux desktops have no common settings for login items.
    void openSettings() override {}

private:
    std::string userFile() const;
    bool isInstalledForAll() const;
    std::optional<std::string> write(const std::string& entry) const;

    Places places_;
};

/// The switch in the autostart entry that starts the program without its window.
inline constexpr const char* atLoginSwitch = "-atLogin YES";

}  // namespace tolvane::linuxhost
