#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/files/FileDescriptor.h"
#include "platform/ChildProcesses.h"

namespace tolvane::linuxhost {

/// Where a tool may stand, in the order in which the places are tried; empty for a tool that nobody asks for.
std::vector<std::string> toolPlaces(std::string_view tool);

/// Whether this user may run the file.
bool isExecutable(const std::string& path);

/// Tools as child processes of ours, as many at a time as there are callers. No time limit: a tool that hangs holds up
/// its caller until `end`. Destroying it ends what runs and waits for the callers.
class LinuxChildProcesses : public ChildProcesses {
public:
    LinuxChildProcesses();
    ~LinuxChildProcesses() override;
    LinuxChildProcesses(const LinuxChildProcesses&) = delete;
    LinuxChildProcesses& operator=(const LinuxChildProcesses&) = delete;

    std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
    std::optional<std::string> find(std::string_view tool) override;
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
