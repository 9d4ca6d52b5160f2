#pragma once

#include <string>
#include <vector>

#include "base/Date.h"
#include "core/history/Moment.h"

namespace tolvane {

/// The moments of a history file that are at most `age` old at `now`, in file order. If the file has other lines, it is
/// replaced by one with only the lines of these moments, unchanged. Returns an empty list and replaces nothing when the
/// file cannot be read or is not UTF-8 throughout.
std::vector<Moment> readAndTrimHistory(const std::string& path, Date now, Seconds age);

}  // namespace tolvane
