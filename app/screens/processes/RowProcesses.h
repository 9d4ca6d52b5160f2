#pragma once

#include <vector>

#include "app/rows/TableRow.h"
#include "platform/ProcessControl.h"

/// The processes behind a row of the table. Returned pointers point into `rows`.
namespace tolvane::RowProcesses {

/// In the order of `rows`; leaves out processes that are gone.
std::vector<const ProcRow*> all(const TableRow& tableRow, const std::vector<ProcRow>& rows);

/// The process that a row without children stands for; null for a group, or when the process is gone.
const ProcRow* own(const TableRow& tableRow, const std::vector<ProcRow>& rows);

/// Null when the process is gone.
const ProcRow* ofPid(Pid pid, const std::vector<ProcRow>& rows);

/// Each process of the row with its start time, so that a reused pid is not mistaken for it.
std::vector<Incarnation> lives(const TableRow& tableRow);

/// The row reduced to those of its processes that are still alive in `rows`: what the user meant by a row seen earlier.
TableRow present(TableRow tableRow, const std::vector<ProcRow>& rows);

}  // namespace tolvane::RowProcesses
