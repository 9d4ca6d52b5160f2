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

/// The time that the charts span.
enum class HistoryRange { hour, sixHours, day };

struct HistoryRangeTraits {
    HistoryRange range;
    std::string_view rawValue;
    std::string_view label;
    Seconds span;
    /// Distance between marks of the time axis.
    Seconds step;
};

inline constexpr std::array<HistoryRangeTraits, 3> historyRanges = {{
    {HistoryRange::hour, "hour", "1 Hour", Seconds{3600}, Seconds{600}},
    {HistoryRange::sixHours, "sixHours", "6 Hours", Seconds{21'600}, Seconds{3600}},
    {HistoryRange::day, "day", "24 Hours", Seconds{86'400}, Seconds{14'400}},
}};

/// Everything that the history screen shows at one moment.
struct HistoryContent {
    HistoryChart memory;
    HistoryChart cpu;
    /// Marks of the time axis that both charts share, oldest first.
    std::vector<HistoryTick> times;
    MomentDetail detail;

    bool operator==(const HistoryContent&) const = default;
};

/// The history screen: two charts over a range, and the details of one moment in it. Main thread.
class HistoryView {
public:
    static constexpr std::string_view rangeLabel = "Range";
    static constexpr EmptyText empty{"History Builds Up",
                                     "Tolvane records memory, swap and CPU once a minute and keeps the last 24 hours, "
                                     "so this fills in as it runs.",
                                     "clock.arrow.circlepath"};

    /// `model` outlives the view. `locale` and `zone` are ICU identifiers; an empty zone is the machine's.
    HistoryView(AppModel& model, std::string locale, std::string zone = {});

    /// Stores the choice in the preferences.
    HistoryRange range() const { return range_; }
    /// Returns to the latest moment.
    void setRange(HistoryRange range);

    /// The time that the user pointed at; nullopt means the latest moment.
    const std::optional<Date>& selected() const { return selected_; }
    void select(std::optional<Date> date) { selected_ = date; }
    /// Moves the selection by that many moments, stopping at either end.
    void move(int places);

    /// nullopt when the range has no moments.
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
