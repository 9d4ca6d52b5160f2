#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/macos/objc/Runtime.h"

/// Converts values to objects and back. Returned objects belong to the caller's pool; nil becomes nullopt. Any thread,
/// within a `Pool`.
namespace tolvane::machost::Foundation {

/// Invalid UTF-8 is repaired, so the result is never nil; a text ends at its first NUL.
Id string(const Runtime& runtime, std::string_view text);
std::optional<std::string> text(const Runtime& runtime, Id string);
/// Nullopt also when the object is not a string.
std::optional<std::string> textIfString(const Runtime& runtime, Id object);

Id fileURL(const Runtime& runtime, std::string_view path);
/// The path of a URL.
std::optional<std::string> path(const Runtime& runtime, Id url);

bool isKindOf(const Runtime& runtime, Id object, const char* className);
std::vector<Id> elements(const Runtime& runtime, Id array);
std::string bytes(const Runtime& runtime, Id data);
/// The error in the user's language; nullopt for no error.
std::optional<std::string> localizedDescription(const Runtime& runtime, Id error);

}  // namespace tolvane::machost::Foundation
