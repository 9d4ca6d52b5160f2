#pragma once

#include <string>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// The program that a process runs; empty when it is gone or shielded.
std::string executableOf(const std::string& proc, Pid pid);

}  // namespace tolvane::linuxhost
