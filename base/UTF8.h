#pragma once

#include <string>
#include <string_view>

namespace tolvane::UTF8 {

bool isValid(std::string_view bytes);

/// Returns valid UTF-8 unchanged. Otherwise each longest prefix of a character that is cut short, and each other stray
/// byte, becomes one U+FFFD. Never fails; keeps NUL bytes.
std::string repaired(std::string_view bytes);

}  // namespace tolvane::UTF8
