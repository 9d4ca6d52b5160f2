#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/text/DesktopEntry.h"

namespace tolvane::linuxhost {

/// Every application that a list of data folders describes, as found at one moment. Never changes; any thread.
class ApplicationIndex {
public:
    /// Where to look: `dataFolders`, the most important first, each with a folder "applications"; `programFolders` are
    /// those of PATH; `locale` is for the names, empty for the user's own.
    struct Places {
        std::vector<std::string> dataFolders;
        std::vector<std::string> programFolders;
        std::string locale;
    };

    explicit ApplicationIndex(const Places& places);
    ApplicationIndex(const ApplicationIndex&) = delete;
    ApplicationIndex& operator=(const ApplicationIndex&) = delete;

    /// None where the identifier is unknown or hidden.
    const DesktopEntry* withIdentifier(std::string_view identifier) const;
    const DesktopEntry* atPath(std::string_view path) const;
    /// The entry of a Snap package: the one named like it, else its only one.
    const DesktopEntry* ofSnap(std::string_view package) const;
    /// The application that an executable is the program of, or that it is installed with. Of entries that start the
    /// same program the plainest one counts. Entries outside of menus or inside terminals are left aside.
    const DesktopEntry* ofExecutable(std::string_view executable) const;
    /// The application that a window says it belongs to: by its identifier, else by the class that the entry announces,
    /// else by the identifier whatever its case or the last part of it.
    const DesktopEntry* ofWindow(std::string_view application) const;

    std::size_t size() const { return entries_.size(); }
    /// Whether a folder that was read has got or lost files since.
    bool isOutdated() const;

private:
    using Entries = std::map<std::string, DesktopEntry, std::less<>>;
    using Programs = std::map<std::string, const DesktopEntry*, std::less<>>;

    void readFolder(const std::string& folder, const std::string& prefix, const std::string& locale, int depth);
    void readFile(const std::string& path, const std::string& identifier, const std::string& locale);
    void indexPrograms(const std::vector<std::string>& programFolders);
    void indexInstallFolders();
    void indexWindowNames();

    /// Hidden ones too until all folders are read.
    Entries entries_;
    std::map<std::string_view, const DesktopEntry*> byPath_;
    /// By the program's resolved path.
    Programs programs_;
    /// By the folder in which a program is installed with all its parts; none of them shared.
    Programs installFolders_;
    /// By what windows may call themselves, in lower case.
    Programs windowNames_;
    /// Folders read, with the times of their last change in nanoseconds; 0 for one that is missing.
    std::vector<std::pair<std::string, long long>> folderTimes_;
};

}  // namespace tolvane::linuxhost
