#include "core/advisor/RowGroups.h"

#include <algorithm>
#include <unordered_map>

namespace tolvane {

void RowGroups::fold(RowSpan rows, const std::vector<std::size_t>& ends) {
    std::unordered_map<std::string_view, std::size_t> places;
    places.reserve(rows.size());
    std::vector<std::size_t> groupOf;
    groupOf.reserve(rows.size());
    std::vector<std::size_t> counts;
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        const auto key = std::string_view(keys_).substr(begin, end - begin);
        const auto [place, isNew] = places.try_emplace(key, groups_.size());
        if (isNew) {
            groups_.push_back({.key = key, .rows = {}});
            counts.push_back(0);
        }
        groupOf.push_back(place->second);
        ++counts[place->second];
        begin = end;
    }

    rows_.resize(rows.size());
    std::vector<std::size_t> next(groups_.size());
    std::size_t taken = 0;
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        groups_[group].rows = RowSpan(rows_).subspan(taken, counts[group]);
        next[group] = taken;
        taken += counts[group];
    }
    for (std::size_t index = 0; index < rows.size(); ++index) rows_[next[groupOf[index]]++] = rows[index];
}

void RowGroups::sort(std::vector<Group>& groups) { std::ranges::sort(groups, {}, &Group::key); }

}  // namespace tolvane
