#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/screens/Question.h"

/// What is asked before processes are ended without a chance to save.
namespace tolvane::ForceQuitQuestion {

Question of(const std::vector<TableRow>& rows, std::string_view locale);
/// "6 processes": how much a line stands for. Empty where each is one process.
std::string extent(const std::vector<TableRow>& rows, std::string_view locale);

}  // namespace tolvane::ForceQuitQuestion
