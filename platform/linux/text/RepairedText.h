#pragma once

#include <string_view>

#include "base/Text.h"

namespace tolvane::linuxhost {

/// Bytes from the kernel as text: what is not UTF-8 becomes U+FFFD, and a NUL ends it.
Text repairedText(std::string_view bytes);

/// Gives `text` these bytes; a text that holds them already stays the same shared one.
void assign(Text& text, std::string_view bytes);

}  // namespace tolvane::linuxhost
