#pragma once

#include <string>
#include <string_view>

namespace tolvane {

/// Converts to lower case by Unicode's default rules, whatever the locale.
std::string lowerCased(std::string_view text);

/// Appends the same to `result`.
void appendLowerCased(std::string& result, std::string_view text);

}  // namespace tolvane
