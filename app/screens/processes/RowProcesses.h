#pragma once

#include <vector>

#include "app/rows/TableRow.h"
#include "platform/ProcessControl.h"

/// The processes behind a line. Pointers that are returned point into `rows`.
namespace tolvane::RowProcesses {

/// In the order of `rows`; processes that are gone are left out.
std::vector<const ProcRow*> all(const TableRow& tableRow, const std::vector<ProcRow>& rows);

/// The process that a line without children stands for; null for a group, or when it is gone.
const ProcRow* own(const TableRow& tableRow, const std::vector<ProcRow>& rows);

/// Null when it is gone.
const ProcRow* ofPid(Pid pid, const std::vector<ProcRow>& rows);

/// Each process as the line shows it: a number that another bears by now is another's.
std::vector<Incarnation> lives(const TableRow& tableRow);

/// The line with those of its processes alone that live on in `rows`: what somebody meant who saw it a while ago.
TableRow present(TableRow tableRow, const std::vector<ProcRow>& rows);

}  // namespace tolvane::RowProcesses
