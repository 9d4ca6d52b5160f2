#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/macos/objc/Runtime.h"

/// Values to objects and back. Objects that come out belong to the pool of the caller; nil goes in as none.
/// Any thread, within a `Pool`.
namespace tolvane::machost::Foundation {

/// What is not UTF-8 is repaired, so that it is never nil; a text ends at its first NUL.
Id string(const Runtime& runtime, std::string_view text);
std::optional<std::string> text(const Runtime& runtime, Id string);
/// None as well when the object is no string.
std::optional<std::string> textIfString(const Runtime& runtime, Id object);

Id fileURL(const Runtime& runtime, std::string_view path);
/// The path of a URL.
std::optional<std::string> path(const Runtime& runtime, Id url);

bool isKindOf(const Runtime& runtime, Id object, const char* className);
std::vector<Id> elements(const Runtime& runtime, Id array);
std::string bytes(const Runtime& runtime, Id data);
/// What went wrong, in the user's language; none for no error.
std::optional<std::string> localizedDescription(const Runtime& runtime, Id error);

}  // namespace tolvane::machost::Foundation
