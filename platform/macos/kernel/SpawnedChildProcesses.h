#pragma once

#include <condition_variable>
#include <mutex>

#include "platform/ChildProcesses.h"
#include "platform/macos/kernel/KernelCalls.h"
#include "platform/macos/kernel/Pipe.h"

namespace tolvane::machost {

/// The paths at which a tool is looked for, in order; empty for an unknown tool.
std::vector<std::string> toolPlaces(std::string_view tool, const std::string& home);

/// Whether this user may run the file.
bool isExecutable(const std::string& path);

/// The first of the paths that this user may run.
std::optional<std::string> firstExecutable(std::vector<std::string> places);

/// Child processes that get a pipe for their output and no other descriptor of ours except standard input. One for each
/// caller at a time, without a time limit. The destructor ends running children and waits for the callers.
class SpawnedChildProcesses : public ChildProcesses {
public:
    /// `spawnFlags` tells this system not to hand on descriptors that were not named.
    /// Tools that only this user installed are looked for below `home`.
    SpawnedChildProcesses(Kernel kernel, short spawnFlags, std::string home = {});
    SpawnedChildProcesses(const SpawnedChildProcesses&) = delete;
    SpawnedChildProcesses& operator=(const SpawnedChildProcesses&) = delete;
    ~SpawnedChildProcesses() override;

    std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
    std::optional<std::string> find(std::string_view tool) override;
    void end() override;

private:
    bool enter();
    void leave();
    std::optional<std::string> runEntered(const std::string& path, const std::vector<std::string>& arguments) const;
    /// Everything up to the end of the pipe; nullopt when this object ended first.
    std::optional<std::string> readAll(int descriptor) const;
    bool endsWell(Pid pid) const;

    Kernel kernel_;
    short spawnFlags_;
    std::string home_;
    /// Its write end closes when this object ends.
    Pipe ended_;
    std::mutex mutex_;
    std::condition_variable left_;
    int callers_ = 0;
    bool ending_ = false;
};

}  // namespace tolvane::machost
