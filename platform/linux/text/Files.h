#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::linuxhost {

/// The bytes of a file, kernel files included; none when it cannot be read or holds more than `limit` bytes.
std::optional<std::string> readWholeFile(const std::string& path, std::size_t limit);

/// Replacing a file so that after a crash either the old or the new content stands there, never a part: first this
/// writes `bytes` to a new file beside `path` and flushes it. Gives the new file's name; none when the disk does not
/// take it. Missing folders are made for this user only, the file is readable by this user only.
std::optional<std::string> writeBeside(const std::string& path, std::string_view bytes);
/// Then this puts the new file in place. False leaves `path` as it was and removes the new file.
bool moveInto(const std::string& path, const std::string& beside);

}  // namespace tolvane::linuxhost
