#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>

#include "core/storage/ActivityStats.h"
#include "core/words/Calendar.h"

namespace tolvane {
namespace {

// A second, plain implementation of the sums to compare the real one with.

std::optional<std::uint64_t> plainMemory(const ActivityEntry& entry) {
    if (entry.dryRun) return std::nullopt;
    if (entry.freed) return entry.freed;
    if (entry.outcome == "Terminated") return entry.memory;
    return std::nullopt;
}

FreedTotals plainFreed(const std::vector<ActivityEntry>& entries, Date since) {
    FreedTotals totals;
    for (const auto& entry : entries) {
        if (entry.date < since || !plainMemory(entry)) continue;
        ++totals.actions;
        totals.memory += *plainMemory(entry);
        totals.compressed += entry.freed ? entry.freedCompressed.value_or(0) : entry.compressed.value_or(0);
    }
    return totals;
}

FreedTotals plainWouldFree(const std::vector<ActivityEntry>& entries, Date since) {
    std::map<std::string, ActivityEntry> kept;
    for (const auto& entry : entries) {
        if (!entry.dryRun || entry.date < since || entry.outcome == "Would lower priority") continue;
        const auto subject =
            entry.subjectKey ? entry.subjectKey->str() : entry.subject.str() + "|" + std::to_string(entry.memory);
        const auto key = entry.ruleName.str() + "|" + subject;
        const auto known = kept.find(key);
        if (known == kept.end() || entry.memory >= known->second.memory) kept.insert_or_assign(key, entry);
    }
    FreedTotals totals{.actions = static_cast<std::int64_t>(kept.size())};
    for (const auto& [key, entry] : kept) {
        totals.memory += entry.memory;
        totals.compressed += entry.compressed.value_or(0);
    }
    return totals;
}

std::vector<ActivityStats::Day> plainDaily(const std::vector<ActivityEntry>& entries, int days, Date endingOn,
                                           const Calendar& calendar) {
    std::map<Date, std::uint64_t> sums;
    for (const auto& entry : entries) {
        if (const auto memory = plainMemory(entry)) sums[calendar.startOfDay(entry.date)] += *memory;
    }
    std::vector<ActivityStats::Day> result;
    for (int back = std::max(days, 1) - 1; back >= 0; --back) {
        const Date day = calendar.startOfDay(*calendar.addingDays(calendar.startOfDay(endingOn), -back));
        result.push_back({day, sums.contains(day) ? sums[day] : 0});
    }
    return result;
}

std::vector<ActivityStats::RuleTotals> plainByRule(const std::vector<ActivityEntry>& entries, Date since) {
    std::map<std::string, std::vector<ActivityEntry>> groups;
    for (const auto& entry : entries) groups[entry.ruleName.str()].push_back(entry);
    std::vector<ActivityStats::RuleTotals> result;
    for (const auto& [rule, group] : groups) {
        result.push_back({.rule = rule, .freed = plainFreed(group, since), .would = plainWouldFree(group, since)});
    }
    std::ranges::stable_sort(result, [](const auto& a, const auto& b) {
        if (a.freed.memory != b.freed.memory) return a.freed.memory > b.freed.memory;
        return a.would.memory > b.would.memory;
    });
    return result;
}

/// Logs with few distinct texts and sizes, over weeks in which clocks change somewhere.
struct ArbitraryLog {
    std::mt19937 random;
    Date middle;

    explicit ArbitraryLog(unsigned seed) : random(seed) {
        // Late March and late October of 2026, and mid-October of 2017, when a day began late in one zone.
        static constexpr std::array<double, 3> weeks = {1774746000, 1792886400, 1508036400};
        middle = dateFromUnixSeconds(weeks[below(3)]);
    }
    std::size_t below(std::size_t limit) { return random() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }
    Date date() {
        const double hours = static_cast<double>(below(1200)) / 2 - 300;
        return middle + Seconds{hours * 3600 + (once(3) ? -0.001 : 0)};
    }
    ActivityEntry entry() {
        static constexpr std::array<const char*, 4> outcomes = {"Terminated", "Quit", "Would terminate",
                                                                "Would lower priority"};
        ActivityEntry entry{.date = date(),
                            .ruleName = once(2) ? "a" : "b|p",
                            .subject = once(2) ? "puma" : "p",
                            .outcome = outcomes[below(4)],
                            .memory = below(5),
                            .dryRun = once(2)};
        if (once(2)) entry.subjectKey = Text(once(2) ? "pid:1:2.0" : "app:x");
        if (once(2)) entry.compressed = below(3);
        if (once(3)) entry.freed = below(4);
        if (once(3)) entry.freedCompressed = below(3);
        return entry;
    }
    std::vector<ActivityEntry> entries() {
        std::vector<ActivityEntry> all(below(60));
        for (auto& one : all) one = entry();
        return all;
    }
};

TEST(ActivityStatsModel, agreesWithPlainSumsOnArbitraryLogs) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        ArbitraryLog log(seed);
        const auto entries = log.entries();
        const auto since = log.date();
        ASSERT_EQ(ActivityStats::freed(entries, since), plainFreed(entries, since)) << "seed " << seed;
        ASSERT_EQ(ActivityStats::wouldFree(entries, since), plainWouldFree(entries, since)) << "seed " << seed;
        ASSERT_EQ(ActivityStats::byRule(entries, since), plainByRule(entries, since)) << "seed " << seed;
    }
}

TEST(ActivityStatsModel, agreesWithPlainDaysInEveryZone) {
    for (const char* zone : {"UTC", "Europe/Berlin", "America/New_York", "America/Sao_Paulo", "Asia/Kathmandu",
                             "Australia/Lord_Howe", "Pacific/Kiritimati"}) {
        const Calendar calendar(zone);
        for (unsigned seed = 0; seed < 60; ++seed) {
            ArbitraryLog log(seed);
            const auto entries = log.entries();
            const auto endingOn = log.date();
            const int days = static_cast<int>(log.below(34)) - 1;
            ASSERT_EQ(ActivityStats::daily(entries, days, endingOn, calendar),
                      plainDaily(entries, days, endingOn, calendar))
                << zone << ", seed " << seed;
        }
    }
}

}  // namespace
}  // namespace tolvane
