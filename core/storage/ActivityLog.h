#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// The latest `limit` lines of an activity log, newest first. Damaged lines count toward the limit but are skipped.
/// Empty when the file cannot be read or is not UTF-8 throughout.
std::vector<ActivityEntry> readActivity(const std::string& path, std::uint64_t limit);

}  // namespace tolvane
