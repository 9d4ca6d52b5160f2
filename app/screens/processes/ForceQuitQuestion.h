#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/screens/Question.h"

/// The confirmation before ending processes without a chance to save.
namespace tolvane::ForceQuitQuestion {

Question of(const std::vector<TableRow>& rows, std::string_view locale);
/// "6 processes": how many processes the rows stand for. Empty when each row is one process.
std::string extent(const std::vector<TableRow>& rows, std::string_view locale);

}  // namespace tolvane::ForceQuitQuestion
