#include "app/screens/rules/MatchesSection.h"

#include <algorithm>

#include "app/rows/Format.h"
#include "core/rules/RuleEngine.h"
#include "core/words/DateWords.h"

namespace tolvane {

MatchesSection MatchesSection::of(const RuleStatus& status, Date now, std::string_view locale) {
    MatchesSection list;
    const auto shown = std::min(most, status.matches.size());
    for (std::size_t number = 0; number < shown; ++number) {
        const auto& match = status.matches[number];
        list.rows.push_back(
            {.title = match.title,
             .detail = Format::bytes(match.memory, locale) + ", unused for " + Format::duration(match.unusedSince, now),
             .isDue = status.isDue(match)});
    }
    const auto rest = status.matches.size() - shown;
    if (rest > 0) list.more = "and " + std::to_string(rest) + " more";
    return list;
}

void MatchesSection::addLastOutcomes(const Rule& rule, const RuleStatus& status,
                                     const std::vector<ActivityEntry>& activity, Date now, std::string_view locale) {
    for (std::size_t number = 0; number < rows.size(); ++number) {
        const auto& key = status.matches[number].subjectKey;
        for (const auto& entry : activity) {
            if (entry.date <= now - RuleEngine::cooldown) break;
            if (entry.ruleName != rule.name || !entry.subjectKey || *entry.subjectKey != key) continue;
            rows[number].lastOutcome = entry.outcome.str() + " at " + DateWords::time(entry.date, locale);
            break;
        }
    }
}

}  // namespace tolvane
