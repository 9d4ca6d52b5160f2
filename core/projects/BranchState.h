#pragma once

#include <optional>
#include <string>

namespace tolvane {

/// What a repository's files tell of its branch.
struct BranchState {
    /// Short name; none without a readable repository, or when the head is detached.
    std::optional<std::string> branch;
    /// The head names a branch that is no ref any more.
    bool deleted = false;

    bool operator==(const BranchState&) const = default;
};

/// The same with what git says of the upstream.
struct ProjectBranch {
    BranchState state;
    bool remoteGone = false;

    bool operator==(const ProjectBranch&) const = default;
};

}  // namespace tolvane
