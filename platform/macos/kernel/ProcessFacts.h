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

/// None when the process is gone, is a zombie, or another length than the record's came back.
std::optional<BSDInfo> readBSDInfo(const KernelCalls& kernel, Pid pid);

/// At microsecond grain, the same for whoever asks: with the pid it names one process.
Date startTimeOf(const BSDInfo& info);

/// Bytes up to the first NUL; what is not UTF-8 is repaired.
Text textOf(std::string_view bytes);

}  // namespace tolvane::machost
