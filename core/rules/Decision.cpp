#include "core/rules/Decision.h"

#include <algorithm>

#include "core/words/Words.h"

namespace tolvane {

namespace {

/// "using 1.2 GB, over the 1 GB limit, while memory was tight"
std::string usage(const Decision& decision, std::string_view locale) {
    const auto size = [&](std::uint64_t bytes) { return Words::bytes(bytes, Words::ByteStyle::sentence, locale); };
    std::string text = "using " + size(decision.memory);
    if (decision.rule.memoryMB) text += ", over the " + size(decision.rule.memoryLimit().value_or(0)) + " limit";
    if (decision.rule.onlyWhenTight.value_or(false)) text += ", while memory was tight";
    return text;
}

}  // namespace

std::string Decision::reason(Date now, std::string_view locale) const {
    // A rule of zero minutes would otherwise say "unused for 0 min".
    constexpr Seconds leastSpan{60};
    std::string text = title;
    if (rule.unusedMinutes) {
        const Seconds span = std::max(leastSpan, now - unusedSince);
        text += " had been unused for " + Words::duration(span, Words::UnitWidth::abbreviated, locale) + " and";
    }
    return text + " was " + usage(*this, locale) + ". Rule: " + rule.name + ".";
}

}  // namespace tolvane
