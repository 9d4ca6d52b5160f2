#pragma once

#include "platform/ChildProcesses.h"
#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// Children that get a pipe for what they print and no other descriptor of ours but standard input.
class SpawnedChildProcesses : public ChildProcesses {
public:
    /// `spawnFlags` is how this system is told to hand on no descriptor that was not named.
    SpawnedChildProcesses(Kernel kernel, short spawnFlags);

    std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;

private:
    Kernel kernel_;
    short spawnFlags_;
};

}  // namespace tolvane::machost
