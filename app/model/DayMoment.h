#pragma once

#include <vector>

#include "app/rows/TableRow.h"
#include "app/sampling/Snapshot.h"
#include "core/history/Moment.h"

namespace tolvane {

/// What of a snapshot is kept for a day: the machine's figures, and who held most. Texts that the latest of `earlier`
/// has are shared with it. Pure.
Moment momentOf(const Snapshot& snapshot, const RowNames& names, const std::vector<Moment>& earlier);

}  // namespace tolvane
