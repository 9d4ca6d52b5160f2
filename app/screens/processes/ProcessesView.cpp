#include "app/screens/processes/ProcessesView.h"

#include <algorithm>
#include <utility>

#include "app/screens/processes/ForceQuitQuestion.h"

namespace tolvane {

namespace {

constexpr std::string_view groupingKey = "grouping";

Grouping storedGrouping(const Preferences& preferences) {
    const auto stored = preferences.get<std::string>(groupingKey);
    const auto found = std::ranges::find(groupings, stored.value_or(""), &GroupingTraits::rawValue);
    return found == groupings.end() ? Grouping::apps : found->grouping;
}

}  // namespace

ProcessesView::ProcessesView(AppModel& model, std::string locale)
    : model_(model), locale_(std::move(locale)), grouping_(storedGrouping(model.preferences())) {}

Grouping ProcessesView::grouping() const { return grouping_; }

void ProcessesView::setGrouping(Grouping grouping) {
    grouping_ = grouping;
    const auto& rawValue = groupings[static_cast<std::size_t>(grouping)].rawValue;
    model_.preferences().set(groupingKey, std::string(rawValue));
}

void ProcessesView::sortBy(RowField field) { sortOrder_ = orderAfterClick(std::move(sortOrder_), field); }

std::vector<TableRow> ProcessesView::rows() const {
    return rowsOf(*model_.snapshot, grouping_, search_, sortOrder_, model_.rowNames(), locale_);
}

std::string ProcessesView::cell(const TableRow& row, ProcessColumn column) const {
    return cellOf(row, column, model_.snapshot->date, locale_);
}

std::vector<TableRow> ProcessesView::selected(const std::vector<TableRow>& rows) const {
    return TableRow::selected(*model_.selectedRows, rows);
}

void ProcessesView::askForceQuit(const std::set<std::string>& ids, const std::vector<TableRow>& rows) {
    auto asked = TableRow::selected(ids, rows);
    if (!asked.empty()) confirmForceQuit_ = std::move(asked);
}

std::optional<Question> ProcessesView::forceQuitQuestion() const {
    if (!confirmForceQuit_) return std::nullopt;
    return ForceQuitQuestion::of(*confirmForceQuit_, locale_);
}

std::vector<TableRow> ProcessesView::confirmForceQuit() {
    auto rows = std::exchange(confirmForceQuit_, std::nullopt).value_or(std::vector<TableRow>{});
    model_.selectRows({});
    return rows;
}

}  // namespace tolvane
