#include "core/sampling/ProcessTree.h"

#include <utility>

namespace tolvane {

ProcessTree::ProcessTree(const std::vector<ProcRow>& rows)
    : bits_(static_cast<unsigned>(std::bit_width(2 * rows.size() + 1))) {
    placeRows(rows);
    findParents(rows);
    listChildren();
}

std::size_t ProcessTree::cell(Pid pid) const {
    const std::uint64_t mixed = static_cast<std::uint32_t>(pid) * 0x9E3779B97F4A7C15U;
    std::size_t cell = mixed >> (64U - bits_);
    while (table_[cell] != none && pids_[table_[cell]] != pid) cell = (cell + 1) % table_.size();
    return cell;
}

void ProcessTree::placeRows(const std::vector<ProcRow>& rows) {
    table_.assign(std::size_t{1} << bits_, none);
    pids_.reserve(rows.size() + 1);
    places_.reserve(rows.size());
    latest_.resize(rows.size());
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        pids_.push_back(rows[row].sample.pid);
        auto& known = table_[cell(pids_.back())];
        if (known == none) known = row;
        places_.push_back(known);
        latest_[known] = row;
    }
}

void ProcessTree::findParents(const std::vector<ProcRow>& rows) {
    parents_.reserve(rows.size());
    for (const auto& row : rows) {
        auto& known = table_[cell(row.sample.ppid)];
        if (known == none) {
            known = static_cast<Place>(pids_.size());
            pids_.push_back(row.sample.ppid);
        }
        parents_.push_back(known);
    }
}

void ProcessTree::listChildren() {
    ends_.assign(pids_.size(), 0);
    for (const Place parent : parents_) ++ends_[parent];
    std::uint32_t begin = 0;
    for (auto& end : ends_) begin += std::exchange(end, begin);
    children_.resize(begin);
    for (std::uint32_t row = 0; row < parents_.size(); ++row) children_[ends_[parents_[row]]++] = row;
}

std::optional<ProcessTree::Place> ProcessTree::place(Pid pid) const {
    const Place place = table_[cell(pid)];
    return hasRow(place) ? std::optional(place) : std::nullopt;
}

std::optional<ProcessTree::Place> ProcessTree::parent(Place place) const {
    return hasRow(parents_[place]) ? std::optional(parents_[place]) : std::nullopt;
}

std::span<const std::uint32_t> ProcessTree::children(Place place) const {
    const std::uint32_t begin = place == 0 ? 0 : ends_[place - 1];
    return std::span(children_).subspan(begin, ends_[place] - begin);
}

std::vector<Pid> ProcessTree::descendants(Pid pid) const {
    const Place root = table_[cell(pid)];
    if (root == none) return {};
    std::vector<Pid> found;
    std::vector<Place> waiting{root};
    std::vector<bool> isOpened(pids_.size());
    while (!waiting.empty()) {
        const Place parent = waiting.back();
        waiting.pop_back();
        if (isOpened[parent]) continue;
        isOpened[parent] = true;
        for (const auto child : children(parent)) {
            if (places_[child] == root) continue;
            found.push_back(pids_[child]);
            waiting.push_back(places_[child]);
        }
    }
    return found;
}

}  // namespace tolvane
