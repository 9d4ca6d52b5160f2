#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Folders.h"
#include "platform/linux/Environment.h"

namespace tolvane::linuxhost {

/// The folders of the XDG base directory rules: a variable counts only with an absolute path, otherwise its default
/// below home does. Home is HOME, else the account's, else the root folder. Read once; any thread.
class LinuxFolders : public Folders {
public:
    explicit LinuxFolders(const Environment& environment);

    std::string home() const override { return home_; }
    /// XDG_DATA_HOME, by default ~/.local/share.
    std::string applicationSupport() const override { return dataHome_; }
    std::optional<std::string> syncFolder() const override;
    /// XDG_CONFIG_HOME, by default ~/.config.
    std::string configHome() const { return configHome_; }
    /// XDG_STATE_HOME, by default ~/.local/state.
    std::string stateHome() const { return stateHome_; }
    /// Where applications are described, the most important first: the data home, then XDG_DATA_DIRS, by default
    /// /usr/local/share and /usr/share.
    std::vector<std::string> dataFolders() const { return dataFolders_; }

private:
    std::string home_;
    std::string dataHome_;
    std::string configHome_;
    std::string stateHome_;
    std::vector<std::string> dataFolders_;
};

/// The home folder that the account database names for a user; none without an entry.
std::optional<std::string> homeOfAccount(unsigned uid);

}  // namespace tolvane::linuxhost
