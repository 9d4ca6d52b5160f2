#include "base/UTF8.h"

#include <simdjson.h>
#include <unicode/utf8.h>

namespace tolvane::UTF8 {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// The first part of `bytes`: one valid character, or the bytes that one U+FFFD replaces.
struct Part {
    std::size_t length = 0;
    bool valid = false;
};

Part firstPart(std::string_view bytes) {
    // A character has at most 4 bytes; the window keeps lengths within the library's 32-bit offsets.
    const auto window = bytes.substr(0, 4);
    std::int32_t offset = 0;
    std::int32_t character = 0;
    // NOLINTNEXTLINE(bugprone-inc-dec-in-conditions): the library's own macro
    U8_NEXT(window.data(), offset, static_cast<std::int32_t>(window.size()), character);
    return {.length = static_cast<std::size_t>(offset), .valid = character >= 0};
}

}  // namespace

// Calls one function of the library and uses none of its records, whose layout depends on its settings.
bool isValid(std::string_view bytes) { return simdjson::validate_utf8(bytes.data(), bytes.size()); }

std::string repaired(std::string_view bytes) {
    if (isValid(bytes)) return std::string(bytes);
    std::string result;
    result.reserve(bytes.size() + 2 * replacement.size());
    while (!bytes.empty()) {
        const auto part = firstPart(bytes);
        result += part.valid ? bytes.substr(0, part.length) : replacement;
        bytes.remove_prefix(part.length);
    }
    return result;
}

}  // namespace tolvane::UTF8
