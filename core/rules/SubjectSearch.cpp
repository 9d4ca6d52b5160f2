#include "core/rules/SubjectSearch.h"

namespace tolvane {

SubjectSearch SubjectSearch::all(const Rule& rule) {
    SubjectSearch search;
    search.rule = &rule;
    return search;
}

std::optional<SubjectSearch> SubjectSearch::due(const Rule& rule, Date now) {
    // This program never writes a negative limit, and there is no telling what one would mean.
    if (rule.memoryMB && !rule.memoryLimit()) return std::nullopt;
    SubjectSearch search = all(rule);
    search.now = now;
    if (rule.unusedMinutes) search.unused = Seconds{static_cast<double>(*rule.unusedMinutes) * 60.0};
    search.memory = rule.memoryLimit().value_or(0);
    return search;
}

}  // namespace tolvane
