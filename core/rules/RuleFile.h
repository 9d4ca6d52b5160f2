#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "core/json/Error.h"
#include "core/rules/Rule.h"

/// The small files in which rules leave and enter the program. Pure.
namespace tolvane::RuleFile {

inline constexpr std::string_view fileExtension = "tolvanerules";
inline constexpr std::string_view typeIdentifier = "dev.tolvane.rules";

std::string encode(const std::vector<Rule>& rules);

/// One bad rule fails the whole file. Files of later versions are read like the first one's.
Result<std::vector<Rule>, json::Error> decode(std::string_view bytes);

/// `existing` and behind it what `imported` has that is new by target, conditions and action. What comes in only logs,
/// however it stood, and gets another id where its own is taken.
std::vector<Rule> merge(const std::vector<Rule>& imported, std::vector<Rule> existing);

/// What the user is told after `added` rules came from the file of that name.
std::string importMessage(std::string_view name, std::size_t added);
std::string notARuleFile(std::string_view name);

}  // namespace tolvane::RuleFile
