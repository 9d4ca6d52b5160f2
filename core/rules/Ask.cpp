#include "core/rules/Ask.h"

namespace tolvane {

Ask Ask::all(const Rule& rule) {
    Ask ask;
    ask.rule = &rule;
    return ask;
}

std::optional<Ask> Ask::due(const Rule& rule, Date now) {
    // A limit below zero stands in no rule that this program wrote, and what it would mean is anyone's guess.
    if (rule.memoryMB && !rule.memoryLimit()) return std::nullopt;
    Ask ask = all(rule);
    ask.now = now;
    if (rule.unusedMinutes) ask.unused = Seconds{static_cast<double>(*rule.unusedMinutes) * 60.0};
    ask.memory = rule.memoryLimit().value_or(0);
    return ask;
}

}  // namespace tolvane
