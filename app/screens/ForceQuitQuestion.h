#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/Line.h"

namespace tolvane {

/// What is asked before processes are ended without a chance to save.
struct ForceQuitQuestion {
    std::string title;
    std::string message;
    /// The button that does it.
    std::string action;

    bool operator==(const ForceQuitQuestion&) const = default;

    static ForceQuitQuestion of(const std::vector<Line>& lines, std::string_view locale);
};

}  // namespace tolvane
