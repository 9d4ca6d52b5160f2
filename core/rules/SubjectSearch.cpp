#include "core/rules/SubjectSearch.h"

namespace tolvane {

SubjectSearch SubjectSearch::all(const Rule& rule) {
    SubjectSearch search;
    search.rule = &rule;
    return search;
}

std::optional<SubjectSearch> SubjectSearch::due(const Rule& rule, Date now) {
    // A limit below zero stands in no rule that this program wrote, and what it would mean is anyone's guess.
    if (rule.memoryMB && !rule.memoryLimit()) return std::nullopt;
    SubjectSearch search = all(rule);
    search.now = now;
    if (rule.unusedMinutes) search.unused = Seconds{static_cast<double>(*rule.unusedMinutes) * 60.0};
    search.memory = rule.memoryLimit().value_or(0);
    return search;
}

}  // namespace tolvane
