#include "core/rules/PidIndex.h"

#include <algorithm>

namespace tolvane {

namespace {

template <typename Key>
std::vector<PidIndex::Entry> entriesOf(const std::vector<ProcRow>& rows, const Key& key) {
    std::vector<PidIndex::Entry> entries;
    entries.reserve(rows.size());
    for (const auto& row : rows) entries.emplace_back(key(row), static_cast<std::uint32_t>(entries.size()));
    return entries;
}

}  // namespace

PidIndex::PidIndex(std::vector<Entry> entries) : entries_(std::move(entries)) {
    // Kernels mostly list pids in order, and looking costs less than sorting what is sorted.
    if (!std::ranges::is_sorted(entries_)) std::ranges::sort(entries_);
}

PidIndex PidIndex::byPid(const std::vector<ProcRow>& rows) {
    return PidIndex(entriesOf(rows, [](const ProcRow& row) { return row.sample.pid; }));
}

PidIndex PidIndex::byParent(const std::vector<ProcRow>& rows) {
    return PidIndex(entriesOf(rows, [](const ProcRow& row) { return row.sample.ppid; }));
}

std::span<const PidIndex::Entry> PidIndex::all(Pid pid) const {
    const auto begin = std::ranges::lower_bound(entries_, Entry{pid, 0});
    auto end = begin;
    while (end != entries_.end() && end->first == pid) ++end;
    return {begin, end};
}

const std::uint32_t* PidIndex::first(Pid pid) const {
    const auto found = std::ranges::lower_bound(entries_, Entry{pid, 0});
    return found != entries_.end() && found->first == pid ? &found->second : nullptr;
}

}  // namespace tolvane
