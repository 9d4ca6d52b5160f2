#pragma once

#include <condition_variable>
#include <mutex>

#include "platform/ChildProcesses.h"
#include "platform/macos/kernel/KernelCalls.h"
#include "platform/macos/kernel/Pipe.h"

namespace tolvane::machost {

/// Children that get a pipe for what they print and no other descriptor of ours but standard input. As many at a time
/// as there are callers, without a time limit. Destroying it ends what runs and waits for the callers.
class SpawnedChildProcesses : public ChildProcesses {
public:
    /// `spawnFlags` is how this system is told to hand on no descriptor that was not named.
    SpawnedChildProcesses(Kernel kernel, short spawnFlags);
    SpawnedChildProcesses(const SpawnedChildProcesses&) = delete;
    SpawnedChildProcesses& operator=(const SpawnedChildProcesses&) = delete;
    ~SpawnedChildProcesses() override;

    std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
    bool isExecutable(const std::string& path) override;
    void end() override;

private:
    bool enter();
    void leave();
    std::optional<std::string> runEntered(const std::string& path, const std::vector<std::string>& arguments) const;
    /// Everything up to the end of the pipe; none when the end came first.
    std::optional<std::string> readAll(int descriptor) const;
    bool endsWell(Pid pid) const;

    Kernel kernel_;
    short spawnFlags_;
    /// Its other side is closed when the end comes.
    Pipe ended_;
    std::mutex mutex_;
    std::condition_variable left_;
    int callers_ = 0;
    bool ending_ = false;
};

}  // namespace tolvane::machost
