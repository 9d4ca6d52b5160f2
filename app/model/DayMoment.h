#pragma once

#include <vector>

#include "app/rows/TableRow.h"
#include "app/sampling/Snapshot.h"
#include "core/history/Moment.h"

namespace tolvane {

/// The part of a snapshot that is kept for a day: the machine's values, and the largest holders. Shares texts with the
/// latest of `earlier`. Pure.
Moment momentOf(const Snapshot& snapshot, const RowNames& names, const std::vector<Moment>& earlier);

}  // namespace tolvane
