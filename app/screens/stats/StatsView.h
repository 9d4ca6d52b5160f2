#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/EmptyText.h"
#include "core/storage/ActivityStats.h"
#include "core/words/Calendar.h"

namespace tolvane {

/// The time that the sums span.
enum class StatsPeriod { week, month, all };

struct StatsPeriodTraits {
    StatsPeriod period;
    std::string_view rawValue;
    std::string_view label;
};

inline constexpr std::array<StatsPeriodTraits, 3> statsPeriods = {{
    {StatsPeriod::week, "week", "7 Days"},
    {StatsPeriod::month, "month", "30 Days"},
    {StatsPeriod::all, "all", "All Time"},
}};

/// One rule with the memory that it freed.
struct StatsBar {
    std::string rule;
    std::string figure;
    /// Share of the widest bar, 0 to 1; 0 draws no bar.
    double share = 0;

    bool operator==(const StatsBar&) const = default;
};

/// One day of the chart.
struct StatsDay {
    /// The first moment of the day.
    Date day;
    /// Bytes.
    std::uint64_t memory = 0;
    /// Shown under the bar.
    std::string label;
    /// Shown above the bar while it is selected.
    std::string figure;
    /// "Wednesday, November 18: 1.9 GB"
    std::string spoken;

    bool operator==(const StatsDay&) const = default;
};

/// A mark of the chart's value axis.
struct StatsTick {
    /// Bytes.
    double value = 0;
    std::string label;

    bool operator==(const StatsTick&) const = default;
};

/// The memory that rules in Log Only would have freed.
struct WouldHaveFreed {
    std::vector<StatsBar> bars;
    /// The rule of the first bar, if it still exists, and the label of the button that shows it; empty for no button.
    std::optional<UUID> rule;
    std::string showRule;

    bool operator==(const WouldHaveFreed&) const = default;
};

/// Everything that the stats screen shows at one moment.
struct StatsContent {
    /// "Freed by rules, last 7 days"
    std::string headline;
    std::string freed;
    /// "From 11 actions. 2.31 GB of it was compressed or in swap."
    std::string remark;
    std::vector<StatsBar> eachRule;
    /// Oldest first.
    std::vector<StatsDay> days;
    /// Ascending from zero; the last is at or above the largest day.
    std::vector<StatsTick> ticks;
    std::optional<WouldHaveFreed> wouldHaveFreed;

    bool operator==(const StatsContent&) const = default;
};

/// The stats screen: sums over the activity log. Main thread.
class StatsView {
public:
    static constexpr std::string_view periodLabel = "Period";
    static constexpr std::string_view eachRuleTitle = "Each rule";
    static constexpr std::string_view eachRuleRemark =
        "Counts only processes that are gone. A restart counts what the app used before, minus what it used a minute "
        "after it came back.";
    static constexpr std::string_view chartTitle = "Memory freed each day";
    static constexpr std::string_view chartShortTitle = "Each day";
    static constexpr std::string_view dayAxis = "Day", freedAxis = "Freed";
    static constexpr std::string_view wouldTitle = "Log Only rules would have freed";
    static constexpr std::string_view wouldRemark =
        "Each process counted once, at the most memory it used while logged.";
    static constexpr EmptyText empty{
        "No Stats Yet", "Once a rule acts, or logs what it would do, this shows how much memory it gave back.",
        "chart.bar"};

    /// `model` outlives the view. `locale` and `zone` are ICU identifiers; an empty zone is the machine's.
    StatsView(AppModel& model, std::string locale, std::string zone = {});

    /// Stores the choice in the preferences.
    StatsPeriod period() const { return period_; }
    void setPeriod(StatsPeriod period);
    /// The first moment of the day whose bar is selected.
    const std::optional<Date>& selectedDay() const { return selectedDay_; }
    void selectDay(std::optional<Date> day) { selectedDay_ = day; }

    bool isEmpty() const { return model_.activity->empty(); }
    StatsContent content() const;
    /// The day that `content` ends with now. When it changes, the sums change too.
    Date today() const;
    /// Shows the rule in its editor.
    void show(const UUID& rule);

    /// The length of the period in days. All time counts from the oldest entry to today, and at least a week.
    static int days(StatsPeriod period, const std::vector<ActivityEntry>& entries, Date now, const Calendar& calendar);
    /// The first moment of a period of that many whole days up to today.
    static Date since(int days, Date now, const Calendar& calendar);
    static std::vector<StatsTick> ticks(std::uint64_t largest, std::string_view locale);

private:
    std::vector<StatsDay> daysOf(const std::vector<ActivityStats::Day>& daily) const;
    std::optional<WouldHaveFreed> wouldOf(const std::vector<ActivityStats::RuleTotals>& rules) const;

    AppModel& model_;
    std::string locale_;
    std::string zone_;
    Calendar calendar_;
    StatsPeriod period_ = StatsPeriod::week;
    std::optional<Date> selectedDay_;
};

}  // namespace tolvane
