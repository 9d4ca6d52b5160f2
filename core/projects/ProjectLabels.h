#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "core/projects/ProjectRoots.h"
#include "core/sampling/PidTable.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// Sets the project of each row. Remembers the latest answer for each process: processes hardly ever change folders, so
/// a steady tick compares two pointers a row and hashes nothing. Confined to one thread at a time.
class ProjectLabels {
public:
    explicit ProjectLabels(ProjectRoots roots) : roots_(std::move(roots)) {}

    /// Clears the project of rows inside an application and of rows whose folder is unknown.
    void apply(std::vector<ProcRow>& rows);

private:
    struct Answer {
        Pid pid = 0;
        /// The latest call that used the answer.
        std::uint32_t sweep = 0;
        Text folder;
        std::optional<Text> project;
    };

    std::optional<Text> projectOf(Pid pid, const Text& folder);

    ProjectRoots roots_;
    PidTable<Answer> answers_;
    std::uint32_t sweep_ = 0;
};

}  // namespace tolvane
