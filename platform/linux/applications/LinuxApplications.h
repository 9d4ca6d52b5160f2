#pragma once

#include <functional>
#include <memory>
#include <mutex>

#include "base/Date.h"
#include "platform/Applications.h"
#include "platform/linux/applications/ApplicationIndex.h"
#include "platform/linux/settings/LinuxFolders.h"

namespace tolvane::linuxhost {

/// Applications by their desktop entries: the bundle path is the entry's file, the identifier the entry's name.
///
/// A process belongs to the application whose scope or service is its control group, in whose sandbox it runs, or else
/// whose program it runs. A process that a person started by hand, in the window of a terminal or an editor, belongs to
/// no application unless its own program is one; interpreters are no application's program.
///
/// Reads the entries at the first question and checks at most once a minute whether they changed. Any thread.
class LinuxApplications : public Applications {
public:
    struct Settings {
        ApplicationIndex::Places places;
        std::string proc = "/proc";
        /// Time that never goes back, in seconds.
        std::function<Seconds()> uptime;
    };

    explicit LinuxApplications(Settings settings);

    /// Looks in the XDG data folders and those of Flatpak and Snap, and for programs on PATH.
    static Settings settingsFor(const LinuxFolders& folders, const Environment& environment);

    std::optional<Text> appPath(Pid pid, std::string_view executable) override;
    std::optional<Text> appID(std::string_view appPath) override;
    std::string displayName(std::string_view appPath) override;
    std::string iconName(std::string_view appPath) override;
    /// The entry's file; nullopt for an identifier that is not installed.
    std::optional<Text> pathOfIdentifier(std::string_view identifier);
    /// The file and the identifier of the entry that a window names; nullopt when no application has the name.
    std::optional<Text> pathOfWindow(std::string_view application);
    std::optional<std::string> identifierOfWindow(std::string_view application);

private:
    std::shared_ptr<const ApplicationIndex> index();

    Settings settings_;
    std::mutex mutex_;
    std::shared_ptr<const ApplicationIndex> index_;
    Seconds checkedAt_{0};
};

}  // namespace tolvane::linuxhost
