#pragma once

#include <string_view>

#include "base/Text.h"

namespace tolvane::linuxhost {

/// Converts bytes from the kernel to text: invalid UTF-8 becomes U+FFFD, and a NUL ends the text.
Text repairedText(std::string_view bytes);

/// Assigns the bytes to `text`; a text that already equals them keeps its shared block.
void assign(Text& text, std::string_view bytes);

}  // namespace tolvane::linuxhost
