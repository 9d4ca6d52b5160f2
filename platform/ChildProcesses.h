#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tolvane {

/// Runs tools of the machine to their end. Any thread; blocks for as long as the tool runs, so it belongs on a
/// background job.
class ChildProcesses {
public:
    virtual ~ChildProcesses() = default;

    /// The bytes that the tool printed. None when it could not be started or exited with another status than 0.
    /// What it says on standard error is dropped; it inherits our standard input and environment.
    virtual std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) = 0;
    /// Whether this user may run the file.
    virtual bool isExecutable(const std::string& path) = 0;
    /// Where this host's packages put a client of the container engine, beside the places that are tried anyway.
    virtual std::vector<std::string> containerClients() { return {}; }
    /// The program is about to end: what runs is killed, and from now on nothing is run. Whoever waits in `run` comes
    /// back at once, so that nobody's end hangs behind a tool that does.
    virtual void end() = 0;
};

}  // namespace tolvane
