#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Folders.h"
#include "platform/linux/text/Environment.h"

namespace tolvane::linuxhost {

/// The folders of the XDG base directory rules: a variable counts only if it holds an absolute path, otherwise its
/// default below home applies. Home is HOME, else the account's, else the root folder. Read once; any thread.
class LinuxFolders : public Folders {
public:
    explicit LinuxFolders(const Environment& environment);

    std::string home() const override { return home_; }
    /// XDG_DATA_HOME, by default ~/.local/share.
    std::string applicationSupport() const override { return dataHome_; }
    /// The folder of the macOS service if it exists here; else the folder that the user named, and no other even while
    /// it is missing; else the first folder of a well-known service below home.
    std::optional<std::string> syncFolder() const override;
    /// Sets how to look up the folder that the user named: an absolute path, or one that starts with "~/".
    void setSyncFolderChoice(std::function<std::optional<std::string>()> choice) { chosenSync_ = std::move(choice); }
    /// XDG_CONFIG_HOME, by default ~/.config.
    std::string configHome() const { return configHome_; }
    /// The folders with desktop entries, the most important first: the data home, then XDG_DATA_DIRS, by default
    /// /usr/local/share and /usr/share.
    std::vector<std::string> dataFolders() const { return dataFolders_; }

private:
    std::string home_;
    std::string dataHome_;
    std::string configHome_;
    std::vector<std::string> dataFolders_;
    std::function<std::optional<std::string>()> chosenSync_;
};

/// The home folder of a user in the account database; nullopt without an entry.
std::optional<std::string> homeOfAccount(unsigned uid);

}  // namespace tolvane::linuxhost
