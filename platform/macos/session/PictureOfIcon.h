#pragma once

#include <string>
#include <string_view>

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// An image as PNG data, at least as fine as `size`; nil when it cannot be drawn. Any thread, within a `Pool`.
Id pngOf(const Runtime& runtime, Id image, Size size);

/// Writes the icon that the file manager shows for a file or an application as a PNG, sharp at 32 points on a
/// high-resolution screen. False when there is no icon or it cannot be written. Any thread.
bool writePictureOfIcon(const Runtime& runtime, std::string_view path, std::string_view picture);

}  // namespace tolvane::machost
