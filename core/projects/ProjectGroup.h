#pragma once

#include <string>
#include <vector>

#include "core/sampling/ProcRow.h"

namespace tolvane {

/// The processes of one project, as a unit that can be stopped.
struct ProjectGroup {
    /// Absolute path of the project's folder; names the group.
    std::string root;
    /// What stopping and parking act on, by ascending pid.
    std::vector<ProcRow> rows;
    /// How many further processes of the project are agents or kept alive by the service manager.
    int leftAlone = 0;

    bool operator==(const ProjectGroup&) const = default;
};

}  // namespace tolvane
