#pragma once

#include <cstdint>

namespace tolvane {

/// A process number as the kernel gives it. It is reused: only with the start time does it name one process.
using Pid = std::int32_t;

}  // namespace tolvane
