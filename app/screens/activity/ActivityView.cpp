#include "app/screens/activity/ActivityView.h"

#include <algorithm>
#include <utility>

#include "app/rows/Format.h"
#include "core/words/DateWords.h"

namespace tolvane {

namespace {

constexpr std::string_view filterKey = "activityFilter";
/// A date whose text is among the widest: late hour, two-digit day, long month name.
constexpr Date wideDate{Seconds{812415480}};

ActivityFilter storedFilter(const Preferences& preferences) {
    const auto stored = preferences.get<std::string>(filterKey);
    const auto found = std::ranges::find(activityFilters, stored.value_or(""), &ActivityFilterTraits::rawValue);
    return found == activityFilters.end() ? ActivityFilter::all : found->filter;
}

}  // namespace

ActivityView::ActivityView(AppModel& model, std::string locale, std::string zone)
    : model_(model), locale_(std::move(locale)), zone_(std::move(zone)), filter_(storedFilter(model.preferences())) {}

void ActivityView::setFilter(ActivityFilter filter) {
    filter_ = filter;
    const auto& rawValue = activityFilters[static_cast<std::size_t>(filter)].rawValue;
    model_.preferences().set(filterKey, std::string(rawValue));
}

bool ActivityView::passes(const ActivityEntry& entry, ActivityFilter filter) {
    return filter == ActivityFilter::all || entry.dryRun == (filter == ActivityFilter::logOnly);
}

std::vector<std::uint32_t> ActivityView::rows() const {
    const auto& entries = *model_.activity;
    std::vector<std::uint32_t> rows;
    rows.reserve(entries.size());
    for (std::uint32_t place = 0; place < entries.size(); ++place) {
        if (passes(entries[place], filter_)) rows.push_back(place);
    }
    return rows;
}

std::string ActivityView::cell(const ActivityEntry& entry, ActivityColumn column) const {
    switch (column) {
        case ActivityColumn::time:
            return DateWords::dateAndTime(entry.date, locale_, zone_);
        case ActivityColumn::whatHappened:
            return entry.outcome.str();
        case ActivityColumn::subject:
            return entry.subject.str();
        case ActivityColumn::memory:
            return Format::bytes(entry.memory, locale_);
        case ActivityColumn::rule:
            break;
    }
    return entry.ruleName.str();
}

std::string ActivityView::widestText(ActivityColumn column) const {
    if (column == ActivityColumn::time) return DateWords::dateAndTime(wideDate, locale_, zone_);
    return std::string(activityColumns[static_cast<std::size_t>(column)].widestSample);
}

std::optional<Question> ActivityView::clearQuestion() const {
    if (!confirmClear_) return std::nullopt;
    return Question{.title = "Clear the activity log?",
                    .message = "Stats are counted from this log, so they start again from zero.",
                    .action = std::string(clearLabel)};
}

void ActivityView::confirmClear() {
    confirmClear_ = false;
    model_.clearActivity();
}

}  // namespace tolvane
