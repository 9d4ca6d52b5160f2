#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/Text.h"

namespace tolvane {

/// Finds the project of a folder: the nearest folder at or above it, but below home, that contains `.git` (a file for
/// linked worktrees). Remembers every answer, including "no project". Confined to one thread at a time. Never fails: a
/// folder that cannot be read counts as absent.
class ProjectRoots {
public:
    using Exists = std::function<bool(const std::string& path)>;

    /// Whether a file or folder exists, following links.
    static bool existsOnDisk(const std::string& path);

    /// `home` is absolute and has no trailing slash.
    explicit ProjectRoots(std::string home, Exists exists = existsOnDisk);

    /// Root folder of the project. Returns nullopt outside projects, for home itself, and for anything not below home.
    /// All folders of a project share one text.
    std::optional<Text> root(const Text& folder);

    /// Number of remembered answers.
    std::size_t remembered() const { return cache_.size(); }

private:
    bool atOrBelowHome(std::string_view folder) const;
    std::optional<Text> look(std::string_view folder);
    Text shared(std::string_view root);

    const std::string home_;
    const Exists exists_;
    std::unordered_map<Text, std::optional<Text>> cache_;
    std::vector<Text> roots_;
};

}  // namespace tolvane
