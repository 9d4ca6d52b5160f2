#include "core/storage/ActivityStats.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <ranges>
#include <string_view>
#include <unordered_map>

namespace tolvane::ActivityStats {

namespace {

constexpr std::string_view terminated = "Terminated";
constexpr std::string_view wouldLowerPriority = "Would lower priority";

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

template <typename Value>
using ByText = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

/// Saturates: a file can claim more bytes than any machine has.
void add(std::uint64_t& sum, std::uint64_t bytes) {
    const auto room = std::numeric_limits<std::uint64_t>::max() - sum;
    sum += std::min(room, bytes);
}

struct Amount {
    std::uint64_t memory = 0;
    std::uint64_t compressed = 0;
};

/// What the entry freed. Returns nullopt for an entry that does not count.
std::optional<Amount> amountFreed(const ActivityEntry& entry) {
    if (entry.dryRun) return std::nullopt;
    if (entry.freed) return Amount{*entry.freed, entry.freedCompressed.value_or(0)};
    if (entry.outcome == terminated) return Amount{entry.memory, entry.compressed.value_or(0)};
    return std::nullopt;
}

void addFreed(FreedTotals& totals, const ActivityEntry& entry, Date since) {
    if (entry.date < since) return;
    const auto amount = amountFreed(entry);
    if (!amount) return;
    ++totals.actions;
    add(totals.memory, amount->memory);
    add(totals.compressed, amount->compressed);
}

/// The largest entry of each subject that log-only rules flagged.
class WouldFree {
public:
    void take(const ActivityEntry& entry, Date since) {
        if (!entry.dryRun || entry.date < since || entry.outcome == wouldLowerPriority) return;
        formKey(entry);
        const auto known = largest_.find(std::string_view(key_));
        if (known == largest_.end()) {
            largest_.emplace(key_, &entry);
        } else if (entry.memory >= known->second->memory) {
            known->second = &entry;
        }
    }

    FreedTotals totals() const {
        FreedTotals totals{.actions = static_cast<std::int64_t>(largest_.size())};
        for (const auto& [key, entry] : largest_) {
            add(totals.memory, entry->memory);
            add(totals.compressed, entry->compressed.value_or(0));
        }
        return totals;
    }

private:
    void formKey(const ActivityEntry& entry) {
        key_.assign(entry.ruleName.view()).append("|");
        if (entry.subjectKey) {
            key_ += entry.subjectKey->view();
        } else {
            // Without a stable key, only exact repeats count as the same subject.
            key_.append(entry.subject.view()).append("|").append(std::to_string(entry.memory));
        }
    }

    ByText<const ActivityEntry*> largest_;
    std::string key_;
};

struct Bar {
    Day day;
    Date end;
};

/// Asks for the start of each day: one day may begin an hour late while its neighbours do not.
Bar barOf(Date day, const Calendar& calendar) {
    const Date next = calendar.addingDays(day, 1).value_or(day + Seconds{86400});
    return {.day = {calendar.startOfDay(day)}, .end = calendar.startOfDay(next)};
}

/// The days with their ends, oldest first.
std::vector<Bar> barsOf(int days, Date endingOn, const Calendar& calendar) {
    const Date last = calendar.startOfDay(endingOn);
    std::vector<Bar> bars;
    for (int back = std::max(1, days) - 1; back >= 0; --back) {
        if (const auto day = calendar.addingDays(last, -back)) bars.push_back(barOf(*day, calendar));
    }
    return bars;
}

/// The bar of the date. Logs are in order of time, so it mostly is the `guess`.
Bar* barFor(std::vector<Bar>& bars, Date date, Bar* guess) {
    const auto holds = [&](const Bar& bar) { return bar.day.day <= date && date < bar.end; };
    if (guess && holds(*guess)) return guess;
    const auto after = std::ranges::upper_bound(bars, date, {}, [](const Bar& bar) { return bar.day.day; });
    if (after == bars.begin()) return nullptr;
    Bar& bar = *std::prev(after);
    return holds(bar) ? &bar : nullptr;
}

bool ranksBefore(const RuleTotals& a, const RuleTotals& b) {
    if (a.freed.memory != b.freed.memory) return a.freed.memory > b.freed.memory;
    if (a.would.memory != b.would.memory) return a.would.memory > b.would.memory;
    return a.rule < b.rule;
}

}  // namespace

FreedTotals freed(const std::vector<ActivityEntry>& entries, Date since) {
    FreedTotals totals;
    for (const auto& entry : entries) addFreed(totals, entry, since);
    return totals;
}

FreedTotals wouldFree(const std::vector<ActivityEntry>& entries, Date since) {
    WouldFree would;
    for (const auto& entry : entries) would.take(entry, since);
    return would.totals();
}

std::vector<Day> daily(const std::vector<ActivityEntry>& entries, int days, Date endingOn, const Calendar& calendar) {
    auto bars = barsOf(days, endingOn, calendar);
    Bar* bar = nullptr;
    for (const auto& entry : entries) {
        const auto amount = amountFreed(entry);
        if (!amount) continue;
        bar = barFor(bars, entry.date, bar);
        if (bar) add(bar->day.memory, amount->memory);
    }
    std::vector<Day> result;
    result.reserve(bars.size());
    for (const auto& one : bars) result.push_back(one.day);
    return result;
}

std::vector<RuleTotals> byRule(const std::vector<ActivityEntry>& entries, Date since) {
    struct Group {
        RuleTotals totals;
        WouldFree would;
    };
    std::unordered_map<Text, Group> groups;
    for (const auto& entry : entries) {
        auto& group = groups[entry.ruleName];
        addFreed(group.totals.freed, entry, since);
        group.would.take(entry, since);
    }
    std::vector<RuleTotals> result;
    result.reserve(groups.size());
    for (auto& [rule, group] : groups) {
        result.push_back({.rule = rule, .freed = group.totals.freed, .would = group.would.totals()});
    }
    std::ranges::sort(result, ranksBefore);
    return result;
}

}  // namespace tolvane::ActivityStats
