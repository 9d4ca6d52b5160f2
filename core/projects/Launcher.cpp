#include "core/projects/Launcher.h"

#include <filesystem>
#include <system_error>

namespace tolvane::Launcher {

std::optional<Pid> start(ProcessControl& control, const ParkedCommand& command, const std::string& log) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(log).parent_path(), ignored);
    return control.start({.executable = command.executable,
                          .args = command.args,
                          .environment = command.env,
                          .workingDirectory = command.cwd,
                          .log = log});
}

}  // namespace tolvane::Launcher
