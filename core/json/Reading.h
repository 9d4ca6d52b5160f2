#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/json/Error.h"
#include "core/json/Simdjson.h"

namespace tolvane::json {

class TextCache;

/// What one reading of a document carries along: its helper, and the trail of an error on its way out.
struct Reading {
    TextCache* texts = nullptr;
    Error error;

    /// False, so that a reader can return it. The innermost reason stays.
    [[nodiscard]] bool fail(std::string_view what);
    [[nodiscard]] bool fail(simdjson::error_code code);
    /// Says where the error happened, from the inside out. False.
    [[nodiscard]] bool within(std::string_view key);
    [[nodiscard]] bool within(std::size_t index);
};

/// Passes over a value that nobody asked for, if it is valid.
bool skip(simdjson::ondemand::value value, Reading& reading);

/// Nothing but blanks follows.
bool isAtEnd(simdjson::ondemand::document& document, Reading& reading);

}  // namespace tolvane::json
