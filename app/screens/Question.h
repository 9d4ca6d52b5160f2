#pragma once

#include <string>

namespace tolvane {

/// What is asked before something that cannot be undone.
struct Question {
    std::string title;
    /// Empty where the title says it all.
    std::string message;
    /// The button that does it.
    std::string action;

    bool operator==(const Question&) const = default;
};

}  // namespace tolvane
