#pragma once

#include <cstdint>

namespace tolvane {

/// A process number from the kernel. Numbers are reused; only a pid and a start time together name one process.
using Pid = std::int32_t;

}  // namespace tolvane
