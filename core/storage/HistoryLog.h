#pragma once

#include <string>
#include <vector>

#include "base/Date.h"
#include "core/history/Moment.h"

namespace tolvane {

/// The moments of a history file that are no older than `age` at `now`, in file order. When there are other lines, the
/// file is replaced by one that holds the lines of these moments as they stood. Empty, and nothing replaced, when the
/// file cannot be read or is not UTF-8 throughout.
std::vector<Moment> readAndTrimHistory(const std::string& path, Date now, Seconds age);

}  // namespace tolvane
