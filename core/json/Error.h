#pragma once

#include <string>

namespace tolvane::json {

/// Why a text could not be read as a record.
struct Error {
    /// "missing", "not a string"
    std::string what;
    /// "rules[3].target"; empty for the document itself.
    std::string where;

    std::string text() const { return where.empty() ? what : where + ": " + what; }
    bool operator==(const Error&) const = default;
};

}  // namespace tolvane::json
