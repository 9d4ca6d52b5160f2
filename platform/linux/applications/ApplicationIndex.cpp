#include "platform/linux/applications/ApplicationIndex.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Entries lie one or two folders deep; this bounds links that form a circle.
constexpr int maximumDepth = 4;

long long changeTime(const std::string& path) {
    struct stat facts{};
    if (::stat(path.c_str(), &facts) != 0) return 0;
    return facts.st_mtim.tv_sec * 1'000'000'000LL + facts.st_mtim.tv_nsec;
}

/// Empty for a path directly below the root and for a path without folders.
std::string_view folderOf(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}
/// The path with its links resolved; empty unless it is an executable file.
std::string resolved(const std::string& path) {
    std::array<char, PATH_MAX> real{};
    if (::access(path.c_str(), X_OK) != 0 || ::realpath(path.c_str(), real.data()) == nullptr) return {};
    return real.data();
}

std::string findProgram(std::string_view program, const std::vector<std::string>& programFolders) {
    if (program.starts_with('/')) return resolved(std::string(program));
    for (const std::string& folder : programFolders) {
        auto found = resolved(folder + "/" + std::string(program));
        if (!found.empty()) return found;
    }
    return {};
}

/// A folder that many programs share does not identify any of them.
bool isShared(std::string_view folder) {
    constexpr std::array names = {std::string_view("bin"),   std::string_view("sbin"),  std::string_view("games"),
                                  std::string_view("lib"),   std::string_view("lib64"), std::string_view("libexec"),
                                  std::string_view("share"), std::string_view("local")};
    if (std::ranges::count(folder, '/') < 2) return true;
    if (Scan::lastComponent(folder).find("-linux-") != std::string_view::npos) return true;
    return std::ranges::find(names, Scan::lastComponent(folder)) != names.end();
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

/// "idea.sh" below "idea", "pycharm.sh" below "pycharm-community".
bool isNamedAlike(std::string_view folder, std::string_view program) {
    const std::string folderName = lowerCase(Scan::lastComponent(folder));
    const std::string stem = lowerCase(Scan::lastComponent(program).substr(0, Scan::lastComponent(program).find('.')));
    return !folderName.empty() && !stem.empty() && (folderName.starts_with(stem) || stem.starts_with(folderName));
}

/// "/opt/name" for "/opt/name/bin/program" and "/opt/name/program"; empty for "/usr/bin/program". Below a home, where
/// packages do not install, only a folder named like the program counts as its own: people keep their work in others.
std::string_view installFolder(std::string_view program) {
    std::string_view folder = folderOf(program);
    if (Scan::lastComponent(folder) == "bin") folder = folderOf(folder);
    const bool isPackaged = folder.starts_with("/opt/") || folder.starts_with("/usr/");
    if (isShared(folder) || (!isPackaged && !isNamedAlike(folder, program))) return {};
    return folder;
}

/// A small program in a shared folder often only starts a program in a folder named after it.
std::vector<std::string> foldersNamedAfter(std::string_view program) {
    std::vector<std::string> folders;
    for (const char* parent : {"/opt/", "/usr/lib/", "/usr/lib64/", "/usr/libexec/", "/usr/share/", "/usr/local/lib/"})
        folders.push_back(parent + std::string(Scan::lastComponent(program)));
    return folders;
}

bool hasProgramOfItsOwn(const DesktopEntry& entry) {
    return !entry.notDisplayed && !entry.needsTerminal &&
           !isNoIdentity(Scan::lastComponent(programOfCommand(entry.command)));
}

/// The kernel marks the path of a program that was deleted while it runs, as upgrades do.
std::string_view withoutDeletedMark(std::string_view path) {
    constexpr std::string_view mark = " (deleted)";
    return path.ends_with(mark) ? path.substr(0, path.size() - mark.size()) : path;
}

}  // namespace

ApplicationIndex::ApplicationIndex(const Places& places) {
    for (const std::string& folder : places.dataFolders) readFolder(folder + "/applications", "", places.locale, 0);
    std::erase_if(entries_, [](const auto& entry) { return entry.second.hidden; });
    for (const auto& [identifier, entry] : entries_) byPath_.emplace(entry.path.view(), &entry);
    indexPrograms(places.programFolders);
    indexInstallFolders();
    indexWindowNames();
}

void ApplicationIndex::readFolder(const std::string& folder, const std::string& prefix, const std::string& locale,
                                  int depth) {
    folderTimes_.emplace_back(folder, changeTime(folder));
    std::error_code error;
    std::filesystem::directory_iterator files(folder, error);
    for (; !error && files != std::filesystem::directory_iterator(); files.increment(error)) {
        const std::string name = files->path().filename().string();
        std::error_code ignored;
        if (name.ends_with(".desktop")) {
            readFile(files->path().string(), prefix + name.substr(0, name.size() - 8), locale);
        } else if (depth < maximumDepth && files->is_directory(ignored)) {
            readFolder(files->path().string(), prefix + name + "-", locale, depth + 1);
        }
    }
}

void ApplicationIndex::readFile(const std::string& path, const std::string& identifier, const std::string& locale) {
    if (entries_.contains(identifier)) return;
    if (auto entry = readDesktopEntry(path, identifier, locale)) entries_.emplace(identifier, std::move(*entry));
}

void ApplicationIndex::indexPrograms(const std::vector<std::string>& programFolders) {
    for (const auto& [identifier, entry] : entries_) {
        if (!hasProgramOfItsOwn(entry)) continue;
        const std::string program = findProgram(programOfCommand(entry.command), programFolders);
        if (program.empty() || isNoIdentity(Scan::lastComponent(program))) continue;
        const DesktopEntry*& plainest = programs_[program];
        if (plainest == nullptr || entry.command.size() < plainest->command.size()) plainest = &entry;
    }
}

void ApplicationIndex::indexInstallFolders() {
    // A folder with two applications belongs to neither, for good.
    const auto claim = [this](std::string_view folder, const DesktopEntry* entry) {
        const auto [place, isNew] = installFolders_.emplace(folder, entry);
        if (!isNew && place->second != entry) place->second = nullptr;
    };
    for (const auto& [program, entry] : programs_) {
        const auto folder = installFolder(program);
        if (!folder.empty()) claim(folder, entry);
        if (!folder.empty()) continue;
        for (const std::string& named : foldersNamedAfter(program)) claim(named, entry);
    }
}

/// Exact names take precedence over similar ones.
void ApplicationIndex::indexWindowNames() {
    for (const auto& [identifier, entry] : entries_) {
        if (!entry.windowClass.empty()) windowNames_.emplace(lowerCase(entry.windowClass), &entry);
    }
    for (const auto& [identifier, entry] : entries_) windowNames_.emplace(lowerCase(identifier), &entry);
    for (const auto& [identifier, entry] : entries_) {
        const auto dot = identifier.rfind('.');
        if (dot != std::string::npos && !entry.notDisplayed)
            windowNames_.emplace(lowerCase(std::string_view(identifier).substr(dot + 1)), &entry);
    }
}

const DesktopEntry* ApplicationIndex::ofWindow(std::string_view application) const {
    if (const DesktopEntry* entry = withIdentifier(application)) return entry;
    const auto found = windowNames_.find(lowerCase(application));
    return found == windowNames_.end() ? nullptr : found->second;
}

const DesktopEntry* ApplicationIndex::withIdentifier(std::string_view identifier) const {
    const auto found = entries_.find(identifier);
    return found == entries_.end() ? nullptr : &found->second;
}

const DesktopEntry* ApplicationIndex::atPath(std::string_view path) const {
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : found->second;
}

const DesktopEntry* ApplicationIndex::ofSnap(std::string_view package) const {
    const std::string prefix = std::string(package) + "_";
    if (const auto* entry = withIdentifier(prefix + std::string(package))) return entry;
    const auto first = entries_.lower_bound(prefix);
    if (first == entries_.end() || !first->first.starts_with(prefix)) return nullptr;
    const auto second = std::next(first);
    const bool isOnly = second == entries_.end() || !second->first.starts_with(prefix);
    return isOnly ? &first->second : nullptr;
}

const DesktopEntry* ApplicationIndex::ofExecutable(std::string_view executable) const {
    executable = withoutDeletedMark(executable);
    if (const auto program = programs_.find(executable); program != programs_.end()) return program->second;
    for (auto folder = folderOf(executable); !folder.empty(); folder = folderOf(folder)) {
        const auto found = installFolders_.find(folder);
        if (found != installFolders_.end()) return found->second;
    }
    return nullptr;
}

bool ApplicationIndex::isOutdated() const {
    return std::ranges::any_of(folderTimes_,
                               [](const auto& folder) { return changeTime(folder.first) != folder.second; });
}

}  // namespace tolvane::linuxhost
