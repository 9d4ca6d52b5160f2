#pragma once

#include <optional>
#include <string>

#include "core/projects/ParkedProject.h"
#include "platform/ProcessControl.h"

/// Starts parked commands again.
namespace tolvane::Launcher {

/// Starts the command in its folder with its environment and appends its output to `log`, creating the folder of the
/// log. Returns nullopt when it could not be started; a process that dies soon after counts as started. Main thread;
/// does not wait for the process.
std::optional<Pid> start(ProcessControl& control, const ParkedCommand& command, const std::string& log);

}  // namespace tolvane::Launcher
