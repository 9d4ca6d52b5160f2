#pragma once

#include <string_view>
#include <vector>

#include "app/Line.h"
#include "app/screens/Question.h"

/// What is asked before processes are ended without a chance to save.
namespace tolvane::ForceQuitQuestion {

Question of(const std::vector<Line>& lines, std::string_view locale);

}  // namespace tolvane::ForceQuitQuestion
