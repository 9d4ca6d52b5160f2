#pragma once

#include <vector>

#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// The TCP ports that the process listens on, for either address family, ascending and without repeats. Empty when its
/// descriptors cannot be read. Any thread; two system calls, plus one for each socket.
std::vector<int> readListeningPorts(const KernelCalls& kernel, Pid pid);

}  // namespace tolvane::machost
