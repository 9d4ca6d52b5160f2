#include "core/rules/ProcessTree.h"

#include <bit>
#include <utility>

namespace tolvane {

ProcessTree::ProcessTree(const std::vector<ProcRow>& rows)
    : rows_(rows), bits_(static_cast<unsigned>(std::bit_width(2 * rows.size() + 1))) {
    placeRows();
    findParents();
    listChildren();
}

std::size_t ProcessTree::cell(Pid pid) const {
    const std::uint64_t mixed = static_cast<std::uint32_t>(pid) * 0x9E3779B97F4A7C15U;
    std::size_t cell = mixed >> (64U - bits_);
    while (table_[cell] != none && rows_[table_[cell]].sample.pid != pid) cell = (cell + 1) % table_.size();
    return cell;
}

void ProcessTree::placeRows() {
    table_.assign(std::size_t{1} << bits_, none);
    places_.reserve(rows_.size());
    for (const auto& row : rows_) {
        auto& known = table_[cell(row.sample.pid)];
        if (known == none) known = static_cast<Place>(places_.size());
        places_.push_back(known);
    }
}

void ProcessTree::findParents() {
    parents_.reserve(rows_.size());
    for (const auto& row : rows_) parents_.push_back(table_[cell(row.sample.ppid)]);
}

void ProcessTree::listChildren() {
    ends_.assign(rows_.size(), 0);
    for (const Place parent : parents_) {
        if (parent != none) ++ends_[parent];
    }
    std::uint32_t begin = 0;
    for (auto& end : ends_) begin += std::exchange(end, begin);
    children_.resize(begin);
    for (std::uint32_t row = 0; row < rows_.size(); ++row) {
        if (parents_[row] != none) children_[ends_[parents_[row]]++] = row;
    }
}

std::optional<ProcessTree::Place> ProcessTree::place(Pid pid) const {
    const Place place = table_[cell(pid)];
    return place == none ? std::nullopt : std::optional(place);
}

std::optional<ProcessTree::Place> ProcessTree::parent(Place place) const {
    return parents_[place] == none ? std::nullopt : std::optional(parents_[place]);
}

std::span<const std::uint32_t> ProcessTree::children(Place place) const {
    const std::uint32_t begin = place == 0 ? 0 : ends_[place - 1];
    return std::span(children_).subspan(begin, ends_[place] - begin);
}

}  // namespace tolvane
