#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane {

/// Runs tools of the machine to their end. Any thread; `run` blocks for as long as the tool runs, so call it on a
/// background job.
class ChildProcesses {
public:
    virtual ~ChildProcesses() = default;

    /// The bytes that the tool printed; nullopt when it could not be started or exited with a status other than 0.
    /// Its standard error is dropped; it inherits our standard input and environment.
    virtual std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) = 0;
    /// Where the tool of this name ("git", "docker") stands: the first of its places on this host that this user may
    /// run it from. Looked for anew each time, so that one installed meanwhile is found.
    virtual std::optional<std::string> find(std::string_view tool) = 0;
    /// The program is about to end: running tools are killed and no new one is started. Calls waiting in `run` return
    /// at once, so a tool that hangs cannot hold up the exit.
    virtual void end() = 0;
};

}  // namespace tolvane
