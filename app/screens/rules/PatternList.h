#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Several texts in one field, separated by commas.
namespace tolvane::PatternList {

/// Trims blanks around each text and drops empty ones.
std::vector<std::string> split(std::string_view text);
std::string join(const std::vector<std::string>& patterns);
std::string_view trimmed(std::string_view text);

}  // namespace tolvane::PatternList
