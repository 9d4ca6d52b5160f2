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
    TableRow line;
    line.id = std::move(id);
    line.title = std::move(title);
    line.detail = std::move(detail);
    line.appPath = std::move(appPath);
    line.unusedSince = distantPast;
    line.pids.reserve(children.size());
    for (const auto& child : children) {
        line.pids.insert(line.pids.end(), child.pids.begin(), child.pids.end());
        line.memory += child.memory;
        line.inRAM += child.inRAM;
        line.compressed += child.compressed;
        line.swapIns += child.swapIns;
        line.cpu += child.cpu;
        line.unusedSince = std::max(line.unusedSince, child.unusedSince);
        if (child.started) line.started = std::min(line.started.value_or(distantFuture), *child.started);
    }
    line.children = std::move(children);
    return line;
}

namespace {

std::weak_ordering compare(Date a, Date b) {
    return std::weak_order(a.time_since_epoch().count(), b.time_since_epoch().count());
}

/// Total also where a figure is not a number.
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

/// Lines that the order calls equal stay as they stood.
bool standsBefore(const std::vector<TableRow>& lines, std::size_t a, std::size_t b,
                  const std::vector<RowOrder>& order) {
    for (const auto& step : order) {
        const auto result = compare(lines[a], lines[b], step.field);
        if (result != 0) return step.ascending ? result < 0 : result > 0;
    }
    return a < b;
}

}  // namespace

/// Lines are large: their places are sorted first, and then each line moves once.
void TableRow::sort(std::vector<TableRow>& lines, const std::vector<RowOrder>& order) {
    std::vector<std::size_t> places(lines.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::ranges::sort(places, [&](std::size_t a, std::size_t b) { return standsBefore(lines, a, b, order); });
    std::vector<TableRow> sorted;
    sorted.reserve(lines.size());
    for (const auto place : places) {
        auto& line = sorted.emplace_back(std::move(lines[place]));
        if (line.children) sort(*line.children, order);
    }
    lines = std::move(sorted);
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

/// The first line of each id, in one walk over all levels.
void collect(const std::vector<TableRow>& lines, std::set<std::string>& wanted, std::vector<const TableRow*>& found) {
    for (const auto& line : lines) {
        if (wanted.erase(line.id) > 0) found.push_back(&line);
        if (wanted.empty()) return;
        if (line.children) collect(*line.children, wanted, found);
    }
}

}  // namespace

std::vector<TableRow> TableRow::selected(const std::set<std::string>& ids, const std::vector<TableRow>& lines) {
    auto wanted = ids;
    std::vector<const TableRow*> found;
    if (!wanted.empty()) collect(lines, wanted, found);
    std::ranges::sort(found, [](const TableRow* a, const TableRow* b) {
        return a->memory != b->memory ? a->memory > b->memory : a->id < b->id;
    });
    std::vector<TableRow> result;
    result.reserve(found.size());
    for (const auto* line : found) result.push_back(*line);
    return result;
}

std::string TableRow::forceQuitQuestion(const std::vector<TableRow>& lines, std::string_view locale) {
    const std::size_t shown = lines.size() < 4 ? lines.size() : 2;
    std::vector<std::string> titles;
    titles.reserve(shown);
    for (std::size_t index = 0; index < shown; ++index) titles.push_back(lines[index].title);
    if (shown == lines.size()) return "Force quit " + Format::list(titles, locale) + "?";
    const auto rest = std::to_string(lines.size() - shown);
    return "Force quit " + titles[0] + ", " + titles[1] + " and " + rest + " more?";
}

}  // namespace tolvane
