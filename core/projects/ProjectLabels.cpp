#include "core/projects/ProjectLabels.h"

namespace tolvane {

void ProjectLabels::apply(std::vector<ProcRow>& rows) {
    ++sweep_;
    for (auto& row : rows) {
        row.project.reset();
        if (row.sample.cwd && !row.appPath) row.project = projectOf(row.id(), *row.sample.cwd);
    }
    answers_.settleWithout([&](const Answer& answer) { return answer.sweep != sweep_; });
}

/// The answer for a folder never changes while `roots_` lives, so an unchanged folder means an unchanged answer.
std::optional<Text> ProjectLabels::projectOf(Pid pid, const Text& folder) {
    auto* known = answers_.find(pid);
    if (known) {
        known->sweep = sweep_;
        if (known->folder == folder) return known->project;
    }
    Answer answer{.pid = pid, .sweep = sweep_, .folder = folder, .project = roots_.root(folder)};
    auto project = answer.project;
    if (known) {
        *known = std::move(answer);
    } else {
        answers_.add(std::move(answer));
    }
    return project;
}

}  // namespace tolvane
