#include <algorithm>
#include <charconv>
#include <iterator>

#include "app/rows/Format.h"
#include "app/screens/processes/ProcessesView.h"
#include "core/words/TextSearch.h"

namespace tolvane {

const std::array<ProcessColumnTraits, 8> processColumns = {{
    {ProcessColumn::name, "Name", RowField::title, "", ""},
    {ProcessColumn::memory, "Memory", RowField::memory, "", "888.8 MB"},
    {ProcessColumn::inRAM, "In RAM", RowField::inRAM,
     "Memory with the compressed part counted at the current compression ratio", "888.8 MB"},
    {ProcessColumn::compressed, "Compressed", RowField::compressed, "", "888.8 MB"},
    {ProcessColumn::cpu, "% CPU", RowField::cpu, "100 is one full core", "888.8"},
    {ProcessColumn::unusedFor, "Unused For", RowField::unusedSince, "", "23h 59m"},
    {ProcessColumn::runningFor, "Running For", RowField::age, "", "23h 59m"},
    {ProcessColumn::pid, "PID", std::nullopt, "", "88888"},
}};

namespace {

/// Matches processes against the search. Reuses its buffers from row to row.
class RowSearch {
public:
    RowSearch(std::string_view search, std::string_view locale) : search_(search, locale) {}

    bool matches(const ProcRow& row) {
        return search_.isIn(row.sample.name) || isInCommandLine(row.sample) || isIn(row.project) ||
               isIn(row.claudeSession) || isInPid(row.sample.pid);
    }

private:
    bool isIn(const std::optional<Text>& text) const { return text && search_.isIn(*text); }

    bool isInCommandLine(const ProcSample& sample) {
        if (sample.args.empty()) return search_.isIn(sample.path);
        commandLine_.clear();
        for (const auto argument : sample.args) commandLine_.append(argument).push_back(' ');
        commandLine_.pop_back();
        return search_.isIn(commandLine_);
    }

    bool isInPid(Pid pid) const {
        std::array<char, 16> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), pid).ptr;
        return search_.isIn({digits.data(), static_cast<std::size_t>(end - digits.data())});
    }

    TextSearch search_;
    std::string commandLine_;
};

/// A long time means an early date.
bool startsAscending(RowField field) {
    return field == RowField::title || field == RowField::unusedSince || field == RowField::age;
}

}  // namespace

std::vector<ProcRow> ProcessesView::rowsMatching(const std::vector<ProcRow>& rows, std::string_view search,
                                                 std::string_view locale) {
    if (search.empty()) return rows;
    std::vector<ProcRow> matching;
    RowSearch rowSearch(search, locale);
    std::ranges::copy_if(rows, std::back_inserter(matching),
                         [&](const ProcRow& row) { return rowSearch.matches(row); });
    return matching;
}

std::vector<TableRow> ProcessesView::rowsOf(const Snapshot& snapshot, Grouping grouping, std::string_view search,
                                            const std::vector<RowOrder>& order, const RowNames& names,
                                            std::string_view locale) {
    const double ratio = snapshot.memory.compressionRatio;
    auto rows = search.empty() ? TableRow::build(snapshot.rows, grouping, ratio, names)
                               : TableRow::build(rowsMatching(snapshot.rows, search, locale), grouping, ratio, names);
    TableRow::sort(rows, order);
    return rows;
}

std::string ProcessesView::cellOf(const TableRow& row, ProcessColumn column, Date now, std::string_view locale) {
    constexpr double leastShownPercent = 0.05;
    switch (column) {
        case ProcessColumn::name:
            return row.title;
        case ProcessColumn::memory:
            return Format::bytes(row.memory, locale);
        case ProcessColumn::inRAM:
            return Format::bytes(row.inRAM, locale);
        case ProcessColumn::compressed:
            return row.compressed > 0 ? Format::bytes(row.compressed, locale) : "";
        case ProcessColumn::cpu:
            return row.cpu >= leastShownPercent ? Format::decimal(row.cpu, 1, 1, locale) : "";
        case ProcessColumn::unusedFor:
            return Format::duration(row.unusedSince, now);
        case ProcessColumn::runningFor:
            return row.started ? Format::duration(*row.started, now) : "";
        case ProcessColumn::pid:
            break;
    }
    return row.children || row.pids.empty() ? "" : std::to_string(row.pids.front());
}

std::vector<RowOrder> ProcessesView::orderAfterClick(std::vector<RowOrder> order, RowField field) {
    if (!order.empty() && order.front().field == field) {
        order.front().ascending = !order.front().ascending;
        return order;
    }
    std::erase_if(order, [&](const RowOrder& step) { return step.field == field; });
    order.insert(order.begin(), {field, startsAscending(field)});
    return order;
}

}  // namespace tolvane
