#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// A rule file where it lies. Each call blocks on the disk and gives, where it fails, one sentence for the user.
struct RulesDocument {
    std::vector<Rule> rules;

    /// What is no regular file, or is far too large for one of rules, is refused without being read.
    static Result<RulesDocument, std::string> read(const std::string& path);
    /// Puts the whole new file in place at once, its folders first. None when that worked; else the old file stands.
    std::optional<std::string> write(const std::string& path) const;

    bool operator==(const RulesDocument&) const = default;
};

}  // namespace tolvane
