#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/text/DesktopEntry.h"

namespace tolvane::linuxhost {

/// Every application that a list of data folders describes at one moment. Immutable; any thread.
class ApplicationIndex {
public:
    /// Where to look: `dataFolders`, the most important first, each with a folder "applications"; `programFolders` are
    /// those of PATH; `locale` selects the names, empty means the user's own.
    struct Places {
        std::vector<std::string> dataFolders;
        std::vector<std::string> programFolders;
        std::string locale;
    };

    explicit ApplicationIndex(const Places& places);
    ApplicationIndex(const ApplicationIndex&) = delete;
    ApplicationIndex& operator=(const ApplicationIndex&) = delete;

    /// Null when the identifier is unknown or hidden.
    const DesktopEntry* withIdentifier(std::string_view identifier) const;
    const DesktopEntry* atPath(std::string_view path) const;
    /// The entry of a Snap package: the one with the name of the package, else its only one.
    const DesktopEntry* ofSnap(std::string_view package) const;
    /// The application whose program is the executable, or with which it is installed. Of several entries that start
    /// the same program, the plainest one counts. Ignores entries that appear in no menu or run in a terminal.
    const DesktopEntry* ofExecutable(std::string_view executable) const;
    /// The application that a window names: by its identifier, else by the window class of the entry, else by the
    /// identifier in any case or its last part.
    const DesktopEntry* ofWindow(std::string_view application) const;

    std::size_t size() const { return entries_.size(); }
    /// Whether files were added to a folder, or removed from it, since it was read.
    bool isOutdated() const;

private:
    using Entries = std::map<std::string, DesktopEntry, std::less<>>;
    using Programs = std::map<std::string, const DesktopEntry*, std::less<>>;

    void readFolder(const std::string& folder, const std::string& prefix, const std::string& locale, int depth);
    void readFile(const std::string& path, const std::string& identifier, const std::string& locale);
    void indexPrograms(const std::vector<std::string>& programFolders);
    void indexInstallFolders();
    void indexWindowNames();

    /// Includes hidden ones until all folders are read.
    Entries entries_;
    std::map<std::string_view, const DesktopEntry*> byPath_;
    /// By the program's resolved path.
    Programs programs_;
    /// By the folder in which a program is installed with all its parts; no shared folders.
    Programs installFolders_;
    /// By the names that windows may use, in lower case.
    Programs windowNames_;
    /// The folders read, with the times of their last change in nanoseconds; 0 for a missing one.
    std::vector<std::pair<std::string, long long>> folderTimes_;
};

}  // namespace tolvane::linuxhost
