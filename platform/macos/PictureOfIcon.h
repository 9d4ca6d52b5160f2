#pragma once

#include <string>
#include <string_view>

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Writes the icon that the file manager shows for a file or an application as a PNG, sharp at 32 points on a fine
/// screen. False when there is none or it cannot be written. Any thread.
bool writePictureOfIcon(const Runtime& runtime, std::string_view path, std::string_view picture);

}  // namespace tolvane::machost
