#include "core/projects/ProjectRoots.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/Paths.h"

namespace tolvane {

namespace {

std::string_view withoutSlashesAtEnd(std::string_view folder) {
    return folder.substr(0, folder.find_last_not_of('/') + 1);
}

}  // namespace

bool ProjectRoots::existsOnDisk(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

ProjectRoots::ProjectRoots(std::string home, Exists exists) : home_(std::move(home)), exists_(std::move(exists)) {}

std::optional<Text> ProjectRoots::root(const Text& folder) {
    const auto known = cache_.find(folder);
    if (known != cache_.end()) return known->second;
    if (!atOrBelowHome(folder)) return std::nullopt;
    return cache_.emplace(folder, look(folder)).first->second;
}

bool ProjectRoots::atOrBelowHome(std::string_view folder) const {
    return folder.starts_with(home_) && (folder.size() == home_.size() || folder[home_.size()] == '/');
}

std::optional<Text> ProjectRoots::look(std::string_view folder) {
    for (auto dir = withoutSlashesAtEnd(folder); !dir.empty() && dir != "/" && dir != home_; dir = Paths::parent(dir)) {
        if (exists_(std::string(dir) + "/.git")) return shared(dir);
    }
    return std::nullopt;
}

Text ProjectRoots::shared(std::string_view root) {
    const auto known = std::ranges::find(roots_, root, &Text::view);
    return known != roots_.end() ? *known : roots_.emplace_back(root);
}

}  // namespace tolvane
