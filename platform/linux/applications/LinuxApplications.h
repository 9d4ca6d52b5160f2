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
/// A process belongs to the application whose scope or service its control group is, whose sandbox it runs in, or else
/// whose program it is. What a person started by hand in a terminal, in a terminal's window or in an editor's, belongs
/// to nobody unless its own program is an application's; interpreters are nobody's program.
///
/// The entries are read at the first question; whether they changed is looked up at most once a minute. Any thread.
class LinuxApplications : public Applications {
public:
    struct Settings {
        ApplicationIndex::Places places;
        std::string proc = "/proc";
        /// Time that never goes back, in seconds.
        std::function<Seconds()> uptime;
    };

    explicit LinuxApplications(Settings settings);

    /// Looks below the XDG data folders and where Flatpak and Snap put theirs, and for programs on PATH.
    static Settings settingsFor(const LinuxFolders& folders, const Environment& environment);

    std::optional<Text> appPath(Pid pid, std::string_view executable) override;
    std::optional<Text> appID(std::string_view appPath) override;
    std::string displayName(std::string_view appPath) override;
    std::string iconName(std::string_view appPath) override;
    /// The entry's file; none for an identifier that is not installed.
    std::optional<Text> pathOfIdentifier(std::string_view identifier);
    /// The entry's file and its identifier for what a window says it belongs to; none for what is no application.
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
