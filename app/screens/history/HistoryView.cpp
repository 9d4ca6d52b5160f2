#include "app/screens/history/HistoryView.h"

#include <algorithm>
#include <utility>

#include "core/words/DateWords.h"

namespace tolvane {

namespace {

constexpr std::string_view rangeKey = "historyRange";

HistoryRange storedRange(const Preferences& preferences) {
    const auto stored = preferences.get<std::string>(rangeKey);
    const auto found = std::ranges::find(historyRanges, stored.value_or(""), &HistoryRangeTraits::rawValue);
    return found == historyRanges.end() ? HistoryRange::sixHours : found->range;
}

}  // namespace

HistoryView::HistoryView(AppModel& model, std::string locale, std::string zone)
    : model_(model), locale_(std::move(locale)), zone_(std::move(zone)), range_(storedRange(model.preferences())) {}

void HistoryView::setRange(HistoryRange range) {
    range_ = range;
    selected_.reset();
    model_.preferences().set(rangeKey, std::string(traits().rawValue));
}

MomentList HistoryView::visible(Date now) const {
    const Date from = now - traits().span;
    MomentList moments;
    for (const auto& each : *model_.moments) {
        if (each.date >= from) moments.push_back(&each);
    }
    return moments;
}

/// The index of the moment nearest to the selected time, the earlier one of a tie; without a selection the last.
std::size_t HistoryView::focus(const MomentList& visible) const {
    if (!selected_) return visible.size() - 1;
    const auto distance = [this](const Moment* each) { return std::chrono::abs(each->date - *selected_); };
    const auto nearest = std::ranges::min_element(visible, {}, distance);
    return static_cast<std::size_t>(nearest - visible.begin());
}

void HistoryView::move(int places) {
    const auto moments = visible(model_.now());
    if (moments.empty()) return;
    const auto last = static_cast<std::ptrdiff_t>(moments.size()) - 1;
    const auto wanted = static_cast<std::ptrdiff_t>(focus(moments)) + places;
    selected_ = moments[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(wanted, 0, last))]->date;
}

std::optional<HistoryContent> HistoryView::content() const {
    const Date now = model_.now();
    const auto moments = visible(now);
    if (moments.empty()) return std::nullopt;
    const auto& moment = *moments[focus(moments)];
    const HistoryDomain domain{.from = now - traits().span, .to = now, .focus = moment.date};
    HistoryContent content{.memory = MemoryHistoryChart::of(moments, domain, locale_),
                           .cpu = CPUHistoryChart::of(moments, domain, locale_),
                           .detail = MomentDetail::of({.moment = moment,
                                                       .all = *model_.moments,
                                                       .activity = *model_.activity,
                                                       .isLatest = moment == *moments.back(),
                                                       .locale = locale_,
                                                       .zone = zone_})};
    for (Date time = domain.from; time <= now + Seconds{1}; time += traits().step) {
        content.times.push_back(
            {.value = time.time_since_epoch().count(), .label = DateWords::time(time, locale_, zone_)});
    }
    return content;
}

}  // namespace tolvane
