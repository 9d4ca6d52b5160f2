#pragma once

#include <string>
#include <string_view>

namespace tolvane::UTF8 {

bool isValid(std::string_view bytes);

/// The same text when it is valid UTF-8; else each longest part that could begin a character, and each other stray
/// byte, becomes one U+FFFD. Never fails; bytes of 0 stay.
std::string repaired(std::string_view bytes);

}  // namespace tolvane::UTF8
