#include <vector>

#include "app/model/AppModelPrivate.h"
#include "app/preferences/AppPreferences.h"
#include "app/rows/Format.h"
#include "core/history/HistoryMath.h"

namespace tolvane {

namespace {

constexpr Seconds betweenSwapWarnings{3600};
constexpr Seconds betweenSuggestionNotices{86'400};
/// Shorter spells are not worth a notification.
constexpr Seconds pressureSpell{300};
/// Less than this is not worth a notification.
constexpr std::uint64_t leastGain = 1'073'741'824;

struct Words {
    std::string title;
    std::string body;
};

/// A date in the future comes from a clock that ran ahead and does not count.
bool isSince(Date date, Date now, Seconds span) { return date <= now && now - date < span; }

/// "Editor (+300 MB), Browser (+120 MB), and node (+60 MB)"
std::string namesOf(const std::vector<Grower>& growers, const std::string& locale) {
    std::vector<std::string> names;
    names.reserve(growers.size());
    for (const auto& each : growers) {
        names.push_back(each.holder.title.str() + " (+" + Format::bytes(each.amount, locale) + ")");
    }
    return Format::list(names, locale);
}

Words wordsOf(const SwapWarning& warning, const std::string& locale) {
    const auto amount = Format::bytes(warning.growth, locale);
    auto words = warning.readBack
                     ? Words{"Apps are waiting on swap", "macOS read " + amount +
                                                             " back from swap in the last 15 minutes, and apps wait "
                                                             "while it does."}
                     : Words{"Swap is growing fast", "Up " + amount + " in the last 15 minutes."};
    if (!warning.growers.empty()) {
        const std::string most = warning.readBack ? " Read back most: " : " Growing most: ";
        words.body += most + namesOf(warning.growers, locale) + ".";
    }
    return words;
}

std::string bodyOf(const std::vector<Suggestion>& visible, std::uint64_t total, const std::string& locale) {
    const auto count = visible.size() == 1 ? "1 suggestion" : std::to_string(visible.size()) + " suggestions";
    return count + " could free " + Format::bytes(total, locale) + ", starting with " + visible.front().title + ".";
}

std::uint64_t memoryOf(const std::vector<Suggestion>& suggestions) {
    std::uint64_t sum = 0;
    for (const auto& each : suggestions) sum += each.memory;
    return sum;
}

}  // namespace

/// Stores the date before it notifies, so that a warning that does not arrive uses up its hour too.
void AppModel::Private::warnAboutSwap() {
    auto& preferences = *host.preferences;
    const auto& now = *model.snapshot;
    if (!AppPreferences::warnSwapGrowth.in(preferences)) return;
    if (isSince(AppPreferences::lastSwapWarning.in(preferences), now.date, betweenSwapWarnings)) return;
    const auto warning = HistoryMath::swapWarning(*model.moments, static_cast<std::int64_t>(now.memory.swapUsed),
                                                  now.memory.swapIns, now.date);
    if (!warning) return;
    AppPreferences::lastSwapWarning.store(preferences, now.date);
    const auto words = wordsOf(*warning, host.locale);
    model.notify(words.title, words.body, AppSection::history);
}

void AppModel::Private::keepPressureClock() {
    const auto& now = *model.snapshot;
    if (now.memory.pressure == Pressure::normal) {
        pressureSince.reset();
    } else if (!pressureSince) {
        pressureSince = now.date;
    }
}

void AppModel::Private::noticeSuggestions() {
    keepPressureClock();
    auto& preferences = *host.preferences;
    const Date now = model.snapshot->date;
    const auto visible = model.visibleSuggestions();
    const auto total = memoryOf(visible);
    if (!AppPreferences::notifyAboutSuggestions.in(preferences) || visible.empty() || total < leastGain) return;
    if (!pressureSince || now - *pressureSince < pressureSpell) return;
    if (isSince(AppPreferences::lastSuggestionNotice.in(preferences), now, betweenSuggestionNotices)) return;
    AppPreferences::lastSuggestionNotice.store(preferences, now);
    model.notify("Memory is tight", bodyOf(visible, total, host.locale), AppSection::suggestions);
}

}  // namespace tolvane
