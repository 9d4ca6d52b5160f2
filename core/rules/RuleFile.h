#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "core/json/Error.h"
#include "core/rules/Rule.h"

/// The format of exported and imported rules. Pure.
namespace tolvane::RuleFile {

inline constexpr std::string_view fileExtension = "tolvanerules";
inline constexpr std::string_view typeIdentifier = "dev.tolvane.rules";

std::string encode(const std::vector<Rule>& rules);

/// One bad rule fails the whole file. Later versions are read like the first.
Result<std::vector<Rule>, json::Error> decode(std::string_view bytes);

/// Appends to `existing` the imported rules that are new by target, conditions and action. They only log at first,
/// whatever the file says, and get another id when theirs is taken.
std::vector<Rule> merge(const std::vector<Rule>& imported, std::vector<Rule> existing);

/// The message after importing `added` rules from the file of that name.
std::string importMessage(std::string_view name, std::size_t added);
std::string notARuleFile(std::string_view name);

}  // namespace tolvane::RuleFile
