#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Result.h"
#include "core/rules/Rule.h"

/// Rule files where they lie. Each call blocks on the disk and gives, where it fails, one sentence for the user.
namespace tolvane::RuleFile {

/// What is no regular file, or is far too large for one of rules, is refused without being read.
Result<std::vector<Rule>, std::string> load(const std::string& path);

/// Puts the whole new file in place at once, its folders first. None when that worked; else the old file stands.
std::optional<std::string> save(const std::string& path, const std::vector<Rule>& rules);

}  // namespace tolvane::RuleFile
