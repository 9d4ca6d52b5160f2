#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/json/Error.h"
#include "core/json/Simdjson.h"

namespace tolvane::json {

class TextCache;

/// State of reading one document: the cache of texts, and the first error with its path.
struct Reading {
    TextCache* texts = nullptr;
    Error error;

    /// Records the first error and returns false, so callers can `return fail(...)`.
    [[nodiscard]] bool fail(std::string_view what);
    [[nodiscard]] bool fail(simdjson::error_code code);
    /// Adds to the path of the error, from the inside out. Returns false.
    [[nodiscard]] bool within(std::string_view key);
    [[nodiscard]] bool within(std::size_t index);
};

/// Skips a value that no field wants, but checks that it is valid.
bool skip(simdjson::ondemand::value value, Reading& reading);

/// Whether only blanks follow.
bool isAtEnd(simdjson::ondemand::document& document, Reading& reading);

}  // namespace tolvane::json
