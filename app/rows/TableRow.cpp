#include "app/rows/TableRow.h"

#include <algorithm>
#include <compare>
#include <numeric>
#include <string>
#include <utility>

#include "app/rows/Format.h"

namespace tolvane {

TableRow TableRow::group(std::string id, std::string title, std::optional<std::string> detail,
                         std::optional<std::string> appPath, std::vector<TableRow> children) {
    TableRow row;
    row.id = std::move(id);
    row.title = std::move(title);
    row.detail = std::move(detail);
    row.appPath = std::move(appPath);
    row.unusedSince = distantPast;
    row.pids.reserve(children.size());
    for (const auto& child : children) {
        row.pids.insert(row.pids.end(), child.pids.begin(), child.pids.end());
        row.memory += child.memory;
        row.inRAM += child.inRAM;
        row.compressed += child.compressed;
        row.swapIns += child.swapIns;
        row.cpu += child.cpu;
        row.unusedSince = std::max(row.unusedSince, child.unusedSince);
        if (child.started) row.started = std::min(row.started.value_or(distantFuture), *child.started);
    }
    row.children = std::move(children);
    return row;
}

namespace {

std::weak_ordering compare(Date a, Date b) {
    return std::weak_order(a.time_since_epoch().count(), b.time_since_epoch().count());
}

/// A total order even where a value is NaN.
std::weak_ordering compare(const TableRow& a, const TableRow& b, RowField field) {
    switch (field) {
        case RowField::title:
            return a.title <=> b.title;
        case RowField::memory:
            return a.memory <=> b.memory;
        case RowField::inRAM:
            return a.inRAM <=> b.inRAM;
        case RowField::compressed:
            return a.compressed <=> b.compressed;
        case RowField::cpu:
            return std::weak_order(a.cpu, b.cpu);
        case RowField::unusedSince:
            return compare(a.unusedSince, b.unusedSince);
        case RowField::age:
            break;
    }
    return compare(a.age(), b.age());
}

/// Rows that compare equal keep their order.
bool standsBefore(const std::vector<TableRow>& rows, std::size_t a, std::size_t b, const std::vector<RowOrder>& order) {
    for (const auto& step : order) {
        const auto result = compare(rows[a], rows[b], step.field);
        if (result != 0) return step.ascending ? result < 0 : result > 0;
    }
    return a < b;
}

}  // namespace

/// Rows are large, so this sorts their indices first and then moves each row once.
void TableRow::sort(std::vector<TableRow>& rows, const std::vector<RowOrder>& order) {
    std::vector<std::size_t> places(rows.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::ranges::sort(places, [&](std::size_t a, std::size_t b) { return standsBefore(rows, a, b, order); });
    std::vector<TableRow> sorted;
    sorted.reserve(rows.size());
    for (const auto place : places) {
        auto& row = sorted.emplace_back(std::move(rows[place]));
        if (row.children) sort(*row.children, order);
    }
    rows = std::move(sorted);
}

TableRow TableRow::sorted(const std::vector<RowOrder>& order) const {
    TableRow copy = *this;
    if (copy.children) sort(*copy.children, order);
    return copy;
}

const TableRow* TableRow::find(std::string_view wanted) const {
    if (id == wanted) return this;
    if (!children) return nullptr;
    for (const auto& child : *children) {
        if (const auto* found = child.find(wanted)) return found;
    }
    return nullptr;
}

namespace {

/// Finds the first row of each id in one walk over all levels.
void collect(const std::vector<TableRow>& rows, std::set<std::string>& wanted, std::vector<const TableRow*>& found) {
    for (const auto& row : rows) {
        if (wanted.erase(row.id) > 0) found.push_back(&row);
        if (wanted.empty()) return;
        if (row.children) collect(*row.children, wanted, found);
    }
}

}  // namespace

std::vector<TableRow> TableRow::selected(const std::set<std::string>& ids, const std::vector<TableRow>& rows) {
    auto wanted = ids;
    std::vector<const TableRow*> found;
    if (!wanted.empty()) collect(rows, wanted, found);
    std::ranges::sort(found, [](const TableRow* a, const TableRow* b) {
        return a->memory != b->memory ? a->memory > b->memory : a->id < b->id;
    });
    std::vector<TableRow> result;
    result.reserve(found.size());
    for (const auto* row : found) result.push_back(*row);
    return result;
}

std::string TableRow::forceQuitQuestion(const std::vector<TableRow>& rows, std::string_view locale) {
    const std::size_t shown = rows.size() < 4 ? rows.size() : 2;
    std::vector<std::string> titles;
    titles.reserve(shown);
    for (std::size_t index = 0; index < shown; ++index) titles.push_back(rows[index].title);
    if (shown == rows.size()) return "Force quit " + Format::list(titles, locale) + "?";
    const auto rest = std::to_string(rows.size() - shown);
    return "Force quit " + titles[0] + ", " + titles[1] + " and " + rest + " more?";
}

}  // namespace tolvane
