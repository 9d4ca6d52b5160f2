#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/EmptyText.h"
#include "app/screens/history/HistoryChart.h"
#include "app/screens/history/MomentDetail.h"

namespace tolvane {

/// How far back the charts reach.
enum class HistoryRange { hour, sixHours, day };

struct HistoryRangeTraits {
    HistoryRange range;
    std::string_view rawValue;
    std::string_view label;
    Seconds span;
    /// Between marks of the time axis.
    Seconds step;
};

inline constexpr std::array<HistoryRangeTraits, 3> historyRanges = {{
    {HistoryRange::hour, "hour", "1 Hour", Seconds{3600}, Seconds{600}},
    {HistoryRange::sixHours, "sixHours", "6 Hours", Seconds{21'600}, Seconds{3600}},
    {HistoryRange::day, "day", "24 Hours", Seconds{86'400}, Seconds{14'400}},
}};

/// All that the history screen shows at one moment.
struct HistoryContent {
    HistoryChart memory;
    HistoryChart cpu;
    /// Marks of the time axis of both, oldest first.
    std::vector<HistoryTick> times;
    MomentDetail detail;

    bool operator==(const HistoryContent&) const = default;
};

/// The history screen: two charts over a range, and what stood out at one moment of it. Main thread.
class HistoryView {
public:
    static constexpr std::string_view rangeLabel = "Range";
    static constexpr EmptyText empty{"History Builds Up",
                                     "Tolvane records memory, swap and CPU once a minute and keeps the last 24 hours, "
                                     "so this fills in as it runs.",
                                     "clock.arrow.circlepath"};

    /// `model` outlives the view. `locale` is an ICU identifier, `zone` one of a time zone; empty is the machine's.
    HistoryView(AppModel& model, std::string locale, std::string zone = {});

    /// Remembered in the preferences.
    HistoryRange range() const { return range_; }
    /// Goes back to the latest moment.
    void setRange(HistoryRange range);

    /// The time that the user pointed at; none for the latest moment.
    const std::optional<Date>& selected() const { return selected_; }
    void select(std::optional<Date> date) { selected_ = date; }
    /// Selects the moment so many places from the one that is looked at, as far as there are any.
    void move(int places);

    /// None when the range has no moments.
    std::optional<HistoryContent> content() const;

private:
    const HistoryRangeTraits& traits() const { return historyRanges[static_cast<std::size_t>(range_)]; }
    MomentList visible(Date now) const;
    std::size_t focus(const MomentList& visible) const;

    AppModel& model_;
    std::string locale_;
    std::string zone_;
    HistoryRange range_;
    std::optional<Date> selected_;
};

}  // namespace tolvane
