#include "app/screens/rules/RuleConditions.h"

#include <algorithm>

#include "app/rows/Format.h"
#include "app/screens/rules/RuleSummary.h"
#include "core/words/Words.h"

namespace tolvane::RuleConditions {

namespace {

template <typename Words>
std::vector<Choice> inWords(const std::vector<std::int64_t>& values, const Words& words) {
    std::vector<Choice> all = {{.value = std::nullopt, .title = std::string(dontCheck)}};
    for (const auto value : values) all.push_back({.value = value, .title = words(value)});
    return all;
}

}  // namespace

std::vector<std::int64_t> choices(std::span<const std::int64_t> stock, std::optional<std::int64_t> current) {
    std::vector<std::int64_t> all(stock.begin(), stock.end());
    if (current) all.push_back(*current);
    std::ranges::sort(all);
    const auto repeated = std::ranges::unique(all);
    all.erase(repeated.begin(), repeated.end());
    return all;
}

std::vector<Choice> unusedChoices(std::optional<std::int64_t> current, std::string_view locale) {
    return inWords(choices(unusedMinutes, current), [locale](std::int64_t minutes) {
        return Words::duration(Seconds{60.0 * static_cast<double>(minutes)}, Words::UnitWidth::wide, locale);
    });
}

std::vector<Choice> memoryChoices(std::optional<std::int64_t> current, std::string_view locale) {
    return inWords(choices(memoryMB, current), [locale](std::int64_t limit) { return limitInWords(limit, locale); });
}

}  // namespace tolvane::RuleConditions
