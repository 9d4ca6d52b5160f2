#pragma once

#include <string>
#include <variant>
#include <vector>

#include "base/Pid.h"

namespace tolvane::machost {

struct OpenFile {
    int descriptor = 0;
    std::string path;
    int flags = 0;
    unsigned mode = 0;

    bool operator==(const OpenFile&) const = default;
};

/// `descriptor` becomes a copy of `source`; if both are the same, the child keeps it.
struct Duplicate {
    int source = 0;
    int descriptor = 0;

    bool operator==(const Duplicate&) const = default;
};

struct ChangeFolder {
    std::string path;

    bool operator==(const ChangeFolder&) const = default;
};

using SpawnAction = std::variant<OpenFile, Duplicate, ChangeFolder>;

/// A program to start, in `posix_spawn`'s terms.
struct SpawnRequest {
    /// An absolute path; PATH is not searched.
    std::string path;
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    /// The child does these in order before the program begins.
    std::vector<SpawnAction> actions;
    short flags = 0;

    bool operator==(const SpawnRequest&) const = default;
};

/// Returns 0 and the child's pid, or the error number. Does not wait. Any thread.
int spawn(const SpawnRequest& request, Pid* pid);

/// This process's environment as entries NAME=value.
std::vector<std::string> ownEnvironment();

}  // namespace tolvane::machost
