#include "app/screens/MatchesSection.h"

#include <algorithm>

#include "app/Format.h"

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

}  // namespace tolvane
