#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Date.h"
#include "base/Pid.h"
#include "base/Text.h"
#include "platform/ProcessControl.h"
#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// Nullopt when the process is gone, is a zombie, or the kernel returned another length than the record's.
std::optional<BSDInfo> readBSDInfo(const KernelCalls& kernel, Pid pid);

/// The bytes that `procStrings` reads; nullopt when the process is gone or shielded.
std::optional<std::string> readArgumentsBlock(const KernelCalls& kernel, Pid pid);

/// To the microsecond and the same for every reader: together with the pid it identifies one process.
Date startTimeOf(const BSDInfo& info);

/// The bytes up to the first NUL; invalid UTF-8 is repaired.
Text textOf(std::string_view bytes);

}  // namespace tolvane::machost
