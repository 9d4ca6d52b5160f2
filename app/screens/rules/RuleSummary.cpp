#include "app/screens/rules/RuleSummary.h"

#include "app/rows/Format.h"

namespace tolvane {

namespace {

std::string unusedClause(std::int64_t minutes) {
    const Date now{};
    return "unused for " + Format::duration(now - Seconds{60.0 * static_cast<double>(minutes)}, now);
}

}  // namespace

std::string limitInWords(std::int64_t memoryMB, std::string_view locale) {
    const auto limit = Rule{.memoryMB = memoryMB}.memoryLimit();
    return limit ? Format::bytes(*limit, locale) : std::to_string(memoryMB) + " MB";
}

std::string summaryOf(const Rule& rule, std::string_view locale) {
    if (!rule.hasCondition()) return "Needs a condition";
    std::string clauses;
    const auto add = [&clauses](const std::string& clause) {
        clauses.append(clauses.empty() ? " when " : " and ").append(clause);
    };
    if (rule.unusedMinutes) add(unusedClause(*rule.unusedMinutes));
    if (rule.memoryMB) add("using over " + limitInWords(*rule.memoryMB, locale));
    if (rule.onlyWhenTight.value_or(false)) add("memory is tight");
    return std::string(RuleActions::title(rule.action)) + clauses;
}

}  // namespace tolvane
