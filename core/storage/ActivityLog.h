#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// The latest `limit` lines of a log of entries, newest first; lines that are damaged are passed over, but count.
/// Empty when the file cannot be read or is not UTF-8 throughout.
std::vector<ActivityEntry> readActivity(const std::string& path, std::uint64_t limit);

}  // namespace tolvane
