#pragma once

#include <string>

namespace tolvane {

/// A confirmation before something that cannot be undone.
struct Question {
    std::string title;
    /// Empty when the title says everything.
    std::string message;
    /// Label of the button that confirms.
    std::string action;

    bool operator==(const Question&) const = default;
};

}  // namespace tolvane
