#include "app/screens/stats/StatsView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "app/rows/Format.h"
#include "core/words/DateWords.h"

namespace tolvane {

namespace {

constexpr std::string_view periodKey = "statsPeriod";
constexpr int daysOfWeek = 7, daysOfMonth = 30;
constexpr double mebibyte = 1'048'576, gibibyte = 1024 * mebibyte;
constexpr int mostSteps = 4;

StatsPeriod storedPeriod(const Preferences& preferences) {
    const auto stored = preferences.get<std::string>(periodKey);
    const auto found = std::ranges::find(statsPeriods, stored.value_or(""), &StatsPeriodTraits::rawValue);
    return found == statsPeriods.end() ? StatsPeriod::week : found->period;
}

std::string headlineOf(StatsPeriod period) {
    switch (period) {
        case StatsPeriod::week:
            return "Freed by rules, last 7 days";
        case StatsPeriod::month:
            return "Freed by rules, last 30 days";
        case StatsPeriod::all:
            break;
    }
    return "Freed by rules, all time";
}

std::string remarkOf(const FreedTotals& freed, std::string_view locale) {
    if (freed.actions == 0) return "No rule stopped or restarted anything in this period.";
    const auto count = Format::decimal(static_cast<double>(freed.actions), 0, 0, locale);
    const auto compressed = freed.compressed > 0 ? Format::bytes(freed.compressed, locale) : std::string("None");
    return "From " + count + (freed.actions == 1 ? " action. " : " actions. ") + compressed +
           " of it was compressed or in swap.";
}

std::vector<StatsBar> barsOf(const std::vector<ActivityStats::RuleTotals>& rules,
                             FreedTotals ActivityStats::RuleTotals::* totals, std::string_view locale) {
    std::uint64_t most = 0;
    for (const auto& each : rules) most = std::max(most, (each.*totals).memory);
    std::vector<StatsBar> bars;
    for (const auto& each : rules) {
        const auto& sum = each.*totals;
        if (sum.actions <= 0) continue;
        const double share = most > 0 ? static_cast<double>(sum.memory) / static_cast<double>(most) : 0;
        bars.push_back({.rule = each.rule.str(), .figure = Format::bytes(sum.memory, locale), .share = share});
    }
    return bars;
}

/// The multiple of 1, 2 or 5 by a power of ten, in whole units, with which a few steps reach `top`.
double roundStep(double top) {
    const double power = std::pow(10, std::max(0.0, std::floor(std::log10(top / mostSteps))));
    for (const double digit : std::array{1.0, 2.0, 5.0}) {
        if (digit * power * mostSteps >= top) return digit * power;
    }
    return 10 * power;
}

}  // namespace

StatsView::StatsView(AppModel& model, std::string locale, std::string zone)
    : model_(model),
      locale_(std::move(locale)),
      zone_(std::move(zone)),
      calendar_(zone_),
      period_(storedPeriod(model.preferences())) {}

void StatsView::setPeriod(StatsPeriod period) {
    period_ = period;
    const auto& rawValue = statsPeriods[static_cast<std::size_t>(period)].rawValue;
    model_.preferences().set(periodKey, std::string(rawValue));
}

Date StatsView::today() const { return calendar_.startOfDay(model_.now()); }

int StatsView::days(StatsPeriod period, const std::vector<ActivityEntry>& entries, Date now, const Calendar& calendar) {
    if (period == StatsPeriod::week) return daysOfWeek;
    if (period == StatsPeriod::month) return daysOfMonth;
    Date oldest = now;
    for (const auto& entry : entries) oldest = std::min(oldest, entry.date);
    const double apart = (calendar.startOfDay(now) - calendar.startOfDay(oldest)).count() / 86400;
    /// Limits the span, as a file can hold any date. Rounding counts a day of 23 hours as a whole one.
    constexpr double longest = 7304;
    return std::max(daysOfWeek, static_cast<int>(std::lround(std::min(apart, longest))) + 1);
}

Date StatsView::since(int days, Date now, const Calendar& calendar) {
    const Date today = calendar.startOfDay(now);
    return calendar.startOfDay(calendar.addingDays(today, 1 - days).value_or(today));
}

StatsContent StatsView::content() const {
    const auto& entries = *model_.activity;
    const Date now = model_.now();
    const int count = days(period_, entries, now, calendar_);
    const Date start = since(count, now, calendar_);
    const auto freed = ActivityStats::freed(entries, start);
    const auto daily = ActivityStats::daily(entries, count, now, calendar_);
    const auto rules = ActivityStats::byRule(entries, start);
    std::uint64_t largest = 0;
    for (const auto& day : daily) largest = std::max(largest, day.memory);
    return {.headline = headlineOf(period_),
            .freed = freed.memory > 0 ? Format::bytes(freed.memory, locale_) : "Nothing yet",
            .remark = remarkOf(freed, locale_),
            .eachRule = barsOf(rules, &ActivityStats::RuleTotals::freed, locale_),
            .days = daysOf(daily),
            .ticks = ticks(largest, locale_),
            .wouldHaveFreed = wouldOf(rules)};
}

std::vector<StatsDay> StatsView::daysOf(const std::vector<ActivityStats::Day>& daily) const {
    std::vector<StatsDay> days;
    days.reserve(daily.size());
    const bool isWeek = daily.size() <= daysOfWeek;
    for (const auto& each : daily) {
        const auto figure = Format::bytes(each.memory, locale_);
        days.push_back({.day = each.day,
                        .memory = each.memory,
                        .label = isWeek ? DateWords::shortWeekday(each.day, locale_, zone_)
                                        : DateWords::dayAndMonth(each.day, locale_, zone_),
                        .figure = figure,
                        .spoken = DateWords::longDay(each.day, locale_, zone_) + ": " + figure});
    }
    return days;
}

std::optional<WouldHaveFreed> StatsView::wouldOf(const std::vector<ActivityStats::RuleTotals>& rules) const {
    WouldHaveFreed would{.bars = barsOf(rules, &ActivityStats::RuleTotals::would, locale_)};
    if (would.bars.empty()) return std::nullopt;
    const auto& first = would.bars.front().rule;
    const auto& present = *model_.rules;
    if (const auto found = std::ranges::find(present, first, &Rule::name); found != present.end()) {
        would.rule = found->id;
        would.showRule = "Show " + first;
    }
    return would;
}

/// Saturates at the largest representable number.
static std::uint64_t wholeBytes(double bytes) {
    constexpr double limit = 18'446'744'073'709'551'616.0;
    return bytes < limit ? static_cast<std::uint64_t>(bytes) : std::numeric_limits<std::uint64_t>::max();
}

std::vector<StatsTick> StatsView::ticks(std::uint64_t largest, std::string_view locale) {
    const auto most = static_cast<double>(largest);
    const bool inGigabytes = largest == 0 || most > 500 * mebibyte;
    const double unit = inGigabytes ? gibibyte : mebibyte;
    const double step = inGigabytes && most <= gibibyte ? 0.5 : roundStep(std::max(1.0, most / unit));
    std::vector<StatsTick> ticks{{.value = 0, .label = inGigabytes ? "0 GB" : "0 MB"}};
    for (double mark = step; ticks.back().value < most || ticks.size() < 3; mark += step) {
        ticks.push_back({.value = mark * unit, .label = Format::bytes(wholeBytes(mark * unit), locale)});
    }
    return ticks;
}

void StatsView::show(const UUID& rule) {
    model_.selectRule(rule);
    model_.show(AppSection::rules);
}

}  // namespace tolvane
