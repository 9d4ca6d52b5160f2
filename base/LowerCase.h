#pragma once

#include <string>
#include <string_view>

namespace tolvane {

/// In lower case by Unicode's own rules, whatever the locale.
std::string lowerCased(std::string_view text);

/// The same, put behind what `result` holds.
void appendLowerCased(std::string& result, std::string_view text);

}  // namespace tolvane
