#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Folders.h"
#include "platform/linux/text/Environment.h"

namespace tolvane::linuxhost {

/// The folders of the XDG base directory rules: a variable counts only with an absolute path, otherwise its default
/// below home does. Home is HOME, else the account's, else the root folder. Read once; any thread.
class LinuxFolders : public Folders {
public:
    explicit LinuxFolders(const Environment& environment);

    std::string home() const override { return home_; }
    /// XDG_DATA_HOME, by default ~/.local/share.
    std::string applicationSupport() const override { return dataHome_; }
    /// The folder of the other host's service where somebody brought it along; else the one that the user named, and
    /// no other even while it is away; else the first that a well-known service keeps below home.
    std::optional<std::string> syncFolder() const override;
    /// Where to ask for the folder that the user named: an absolute path, or one that begins with "~/".
    void setSyncFolderChoice(std::function<std::optional<std::string>()> choice) { chosenSync_ = std::move(choice); }
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
    std::function<std::optional<std::string>()> chosenSync_;
};

/// The home folder that the account database names for a user; none without an entry.
std::optional<std::string> homeOfAccount(unsigned uid);

}  // namespace tolvane::linuxhost
