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
};

}  // namespace tolvane
