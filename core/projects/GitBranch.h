#pragma once

#include <string_view>

#include "core/projects/BranchState.h"

/// What a repository's own files tell of its branch. Reads files and blocks on them: call it off the main thread.
namespace tolvane::GitBranch {

/// The branch that is checked out in the folder. Linked worktrees, submodules and packed refs are followed.
/// Anything that cannot be read as text in UTF-8 gives the empty state. A branch without any commit yet counts as
/// deleted: nothing in the repository bears its name.
BranchState read(std::string_view root);

}  // namespace tolvane::GitBranch
