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

/// `descriptor` becomes what `source` is; on itself it is kept for the child.
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

/// A program to start, in the words of `posix_spawn`.
struct SpawnRequest {
    /// Not searched for.
    std::string path;
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    /// Done in the child in this order, before the program begins.
    std::vector<SpawnAction> actions;
    short flags = 0;

    bool operator==(const SpawnRequest&) const = default;
};

/// 0 and the child's pid, or the number of the error. Does not wait. Any thread.
int spawn(const SpawnRequest& request, Pid* pid);

/// Our own environment as entries NAME=value.
std::vector<std::string> ownEnvironment();

}  // namespace tolvane::machost
