#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/Text.h"

namespace tolvane {

/// Finds the project that a folder lies in: the nearest folder below home, the folder itself included, that holds
/// `.git` (a file for linked worktrees). Each folder's answer is kept for the object's life, "none" too.
/// Confined to one thread at a time. Cannot fail: what cannot be looked at is not there.
class ProjectRoots {
public:
    using Exists = std::function<bool(const std::string& path)>;

    /// Whether a file or folder is there, links followed.
    static bool existsOnDisk(const std::string& path);

    /// `home` is absolute, without a slash at its end.
    explicit ProjectRoots(std::string home, Exists exists = existsOnDisk);

    /// Root folder of the project; none outside of projects, for home itself, and for all that is not below home.
    /// Folders of one project share one text.
    std::optional<Text> root(const Text& folder);

    /// How many folders' answers are kept.
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
