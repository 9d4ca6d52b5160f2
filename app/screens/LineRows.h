#pragma once

#include <vector>

#include "app/Line.h"

/// The processes behind a line. What is returned points into `rows`.
namespace tolvane::LineRows {

/// In the order of `rows`; processes that are gone are left out.
std::vector<const ProcRow*> all(const Line& line, const std::vector<ProcRow>& rows);

/// The process that a line without children stands for; null for a group, or when it is gone.
const ProcRow* own(const Line& line, const std::vector<ProcRow>& rows);

/// Null when it is gone.
const ProcRow* ofPid(Pid pid, const std::vector<ProcRow>& rows);

}  // namespace tolvane::LineRows
