#pragma once

#include <optional>
#include <string>

#include "core/projects/ParkedProject.h"
#include "platform/ProcessControl.h"

/// Brings a parked command back.
namespace tolvane::Launcher {

/// Starts it in its folder with its environment, its output at the end of `log`, whose folder is made. None when it
/// could not be started; one that dies soon after counts as started. Main thread; does not wait for it.
std::optional<Pid> start(ProcessControl& control, const ParkedCommand& command, const std::string& log);

}  // namespace tolvane::Launcher
