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

/// The paths at which a tool is looked for, in order: the folders of `searchPath`, in the form of PATH, and then the
/// usual places. Relative folders are skipped, since they lead elsewhere from each working folder.
std::vector<std::string> toolPlaces(std::string_view tool, std::string_view searchPath);

/// Whether this user may run the file; false for folders.
bool isExecutable(const std::string& path);

/// Runs tools as child processes, as many at a time as there are callers. There is no time limit: a tool that hangs
/// blocks its caller until `end`. The destructor kills running tools and waits for the callers.
class LinuxChildProcesses : public ChildProcesses {
public:
    /// `searchPath` as in PATH.
    explicit LinuxChildProcesses(std::string searchPath = {});
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
    /// Waits until the descriptor is readable or `end` was called.
    Heard listen(int descriptor) const;
    /// Everything up to the end of the pipe; nullopt when `end` was called first.
    std::optional<std::string> readAll(const FileDescriptor& pipe) const;
    /// The child's exit status; nullopt when it ended any other way.
    std::optional<int> exitStatus(pid_t pid) const;

    const std::string searchPath_;
    /// Readable once `end` was called.
    FileDescriptor ended_;
    std::mutex mutex_;
    std::condition_variable left_;
    int callers_ = 0;
    bool ending_ = false;
};

}  // namespace tolvane::linuxhost
