#pragma once

#include <vector>

#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// TCP ports that the process listens on, of either address family, ascending, each once. Empty when its descriptors
/// cannot be read. Any thread; two system calls, and one for each socket.
std::vector<int> readListeningPorts(const KernelCalls& kernel, Pid pid);

}  // namespace tolvane::machost
