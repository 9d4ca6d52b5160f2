#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// A rule file on disk. Each call blocks on the disk and fails with one sentence for the user.
struct RulesDocument {
    std::vector<Rule> rules;

    /// Refuses anything but a regular file, and files far too large for rules, without reading them.
    static Result<RulesDocument, std::string> read(const std::string& path);
    /// Creates the folders, then replaces the file in one step. Returns nullopt on success; on failure the old file
    /// stays.
    std::optional<std::string> write(const std::string& path) const;

    bool operator==(const RulesDocument&) const = default;
};

}  // namespace tolvane
