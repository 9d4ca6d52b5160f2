#include "core/projects/GitBranch.h"

#include <filesystem>
#include <optional>
#include <string>

#include "base/files/Files.h"

namespace tolvane::GitBranch {

namespace {

namespace files = std::filesystem;

constexpr std::string_view linkPrefix = "gitdir: ";
constexpr std::string_view refPrefix = "ref: ";
constexpr std::string_view headsPrefix = "refs/heads/";
/// Never a branch name: HEAD of a repository that keeps its references in a table points there.
constexpr std::string_view inTable = ".invalid";

bool isFile(const files::path& path) {
    std::error_code ignored;
    return files::is_regular_file(path, ignored);
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Calls `accept` with each line until one is accepted.
template <typename Accept>
bool anyLine(std::string_view text, Accept accept) {
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = text.substr(0, end);
        if (!line.empty() && accept(line)) return true;
        if (end == std::string_view::npos) return false;
        text.remove_prefix(end + 1);
    }
    return false;
}

/// A linked worktree or a submodule has a file that names the real folder.
std::optional<files::path> gitFolder(const files::path& root) {
    auto dotGit = root / ".git";
    if (Files::isFolder(dotGit.string())) return dotGit;
    const auto text = Files::readText(dotGit.string());
    if (!text) return std::nullopt;
    std::optional<files::path> folder;
    anyLine(*text, [&](std::string_view line) {
        if (!line.starts_with(linkPrefix)) return false;
        folder = root / line.substr(linkPrefix.size());
        return true;
    });
    return folder;
}

/// The folder with the refs, shared by all worktrees of a repository.
files::path commonFolder(const files::path& gitFolder) {
    const auto text = Files::readText((gitFolder / "commondir").string());
    const auto place = text ? trimmed(*text) : std::string_view{};
    return place.empty() ? gitFolder : (gitFolder / place).lexically_normal();
}

bool isPacked(const files::path& commonFolder, std::string_view ref) {
    const auto packed = Files::readText((commonFolder / "packed-refs").string());
    if (!packed) return false;
    const auto ending = " " + std::string(ref);
    return anyLine(*packed, [&](std::string_view line) { return line.ends_with(ending); });
}

}  // namespace

BranchState read(std::string_view root) {
    const auto folder = gitFolder(files::path(root));
    if (!folder) return {};
    const auto text = Files::readText((*folder / "HEAD").string());
    if (!text) return {};
    const auto head = trimmed(*text);
    if (!head.starts_with(std::string(refPrefix) + std::string(headsPrefix))) return {};
    const auto ref = head.substr(refPrefix.size());
    const auto branch = std::string(ref.substr(headsPrefix.size()));
    if (branch == inTable) return {};
    const auto common = commonFolder(*folder);
    const bool exists = isFile(common / ref) || isPacked(common, ref);
    return {.branch = branch, .deleted = !exists};
}

std::vector<std::string> upstreamArguments(const std::string& root, const std::string& branch) {
    return {"-C", root, "for-each-ref", "--format=%(upstream:track)", std::string(headsPrefix) + branch};
}

bool saysGone(std::string_view printed) { return printed.find("[gone]") != std::string_view::npos; }

}  // namespace tolvane::GitBranch
