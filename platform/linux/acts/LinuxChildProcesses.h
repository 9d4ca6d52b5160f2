#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/files/FileDescriptor.h"
#include "platform/ChildProcesses.h"

namespace tolvane::linuxhost {

/// Tools as child processes of ours, as many at a time as there are callers. No time limit: a tool that hangs holds up
/// its caller until `end`. Destroying it ends what runs and waits for the callers.
class LinuxChildProcesses : public ChildProcesses {
public:
    LinuxChildProcesses();
    ~LinuxChildProcesses() override;
    LinuxChildProcesses(const LinuxChildProcesses&) = delete;
    LinuxChildProcesses& operator=(const LinuxChildProcesses&) = delete;

    std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
    bool isExecutable(const std::string& path) override;
    std::vector<std::string> containerClients() override { return {"/usr/bin/docker"}; }
    void end() override;

private:
    enum class Heard { ready, ended };

    bool enter();
    void leave();
    std::optional<std::string> runEntered(const std::string& path, const std::vector<std::string>& arguments) const;
    /// Waits until the descriptor has something to say, or the end has come.
    Heard listen(int descriptor) const;
    /// Everything up to the end of the pipe; none when the end came first.
    std::optional<std::string> readAll(const FileDescriptor& pipe) const;
    /// The child's exit status; none for every other end.
    std::optional<int> exitStatus(pid_t pid) const;

    /// Readable once the end has come.
    FileDescriptor ended_;
    std::mutex mutex_;
    std::condition_variable left_;
    int callers_ = 0;
    bool ending_ = false;
};

}  // namespace tolvane::linuxhost
