#include "core/projects/Launcher.h"

#include "base/Paths.h"
#include "base/files/Files.h"

namespace tolvane::Launcher {

std::optional<Pid> start(ProcessControl& control, const ParkedCommand& command, const std::string& log) {
    Files::makeFolder(std::string(Paths::parent(log)));
    return control.start({.executable = command.executable,
                          .args = command.args,
                          .environment = command.env,
                          .workingDirectory = command.cwd,
                          .log = log});
}

}  // namespace tolvane::Launcher
