#include "platform/linux/settings/LinuxFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/files/Files.h"

namespace tolvane::linuxhost {

namespace {

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    return path;
}

std::optional<std::string> absolute(std::optional<std::string> path) {
    if (!path || path->empty() || path->front() != '/') return std::nullopt;
    return withoutTrailingSlashes(std::move(*path));
}

std::string below(const std::string& folder, std::string_view name) {
    return (folder == "/" ? "" : folder) + "/" + std::string(name);
}

std::string homeFrom(const Environment& environment) {
    if (auto home = absolute(environment("HOME"))) return *home;
    return absolute(homeOfAccount(::getuid())).value_or("/");
}

std::vector<std::string> absoluteFoldersOf(std::string_view list) {
    std::vector<std::string> folders;
    while (!list.empty()) {
        const auto end = list.find(':');
        if (auto folder = absolute(std::string(list.substr(0, end)))) folders.push_back(std::move(*folder));
        list = end == std::string_view::npos ? std::string_view() : list.substr(end + 1);
    }
    return folders;
}

std::vector<std::string> dataFoldersFrom(const Environment& environment, const std::string& dataHome) {
    std::vector<std::string> shared = absoluteFoldersOf(environment("XDG_DATA_DIRS").value_or(""));
    if (shared.empty()) shared = {"/usr/local/share", "/usr/share"};
    shared.insert(shared.begin(), dataHome);
    return shared;
}

/// The default folders of well-known sync services.
constexpr std::array<std::string_view, 5> knownSyncFolders = {"Nextcloud", "ownCloud", "Dropbox", "OneDrive", "Sync"};

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

std::optional<std::string> withHome(std::optional<std::string> path, const std::string& home) {
    if (!path || !path->starts_with("~/")) return path;
    return below(home, path->substr(2));
}

}  // namespace

LinuxFolders::LinuxFolders(const Environment& environment)
    : home_(homeFrom(environment)),
      dataHome_(absolute(environment("XDG_DATA_HOME")).value_or(below(home_, ".local/share"))),
      configHome_(absolute(environment("XDG_CONFIG_HOME")).value_or(below(home_, ".config"))),
      dataFolders_(dataFoldersFrom(environment, dataHome_)) {}

std::optional<std::string> homeOfAccount(unsigned uid) {
    passwd entry{};
    passwd* found = nullptr;
    // An entry is a line of text; some directory services return a few kilobytes.
    std::array<char, 16384> text{};
    if (::getpwuid_r(uid, &entry, text.data(), text.size(), &found) != 0 || found == nullptr) return std::nullopt;
    if (entry.pw_dir == nullptr) return std::nullopt;
    return std::string(entry.pw_dir);
}

std::optional<std::string> LinuxFolders::syncFolder() const {
    if (auto brought = below(home_, "Library/Mobile Documents/com~apple~CloudDocs"); exists(brought)) return brought;
    const auto chosen = chosenSync_ ? chosenSync_() : std::nullopt;
    if (auto named = absolute(withHome(chosen, home_))) return Files::isFolder(*named) ? named : std::nullopt;
    for (const auto name : knownSyncFolders) {
        if (auto folder = below(home_, name); Files::isFolder(folder)) return folder;
    }
    return std::nullopt;
}

}  // namespace tolvane::linuxhost
