#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Several texts in one field, parted by commas.
namespace tolvane::PatternList {

/// Without blanks around each and without empty ones.
std::vector<std::string> split(std::string_view text);
std::string join(const std::vector<std::string>& patterns);
std::string_view trimmed(std::string_view text);

}  // namespace tolvane::PatternList
