#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/sampling/ProcRow.h"

namespace tolvane {

using RowList = std::vector<const ProcRow*>;
using RowSpan = std::span<const ProcRow* const>;

/// Rows grouped by the text of a key. Refers to the rows. All keys share one text and all rows one list: grouping
/// happens at every tick, and with ten thousand rows one allocation per row would take most of the time.
class RowGroups {
public:
    struct Group {
        std::string_view key;
        /// In the order of the grouped list; never empty.
        RowSpan rows;
    };

    /// `appendKey` appends a row's key to a text.
    template <typename AppendKey>
    RowGroups(RowSpan rows, const AppendKey& appendKey) {
        std::vector<std::size_t> ends;
        ends.reserve(rows.size());
        for (const auto* row : rows) {
            appendKey(*row, keys_);
            ends.push_back(keys_.size());
        }
        fold(rows, ends);
    }
    RowGroups(const RowGroups&) = delete;
    RowGroups& operator=(const RowGroups&) = delete;

    /// The groups whose rows pass, by ascending key. Refers to this object.
    template <typename Passes>
    std::vector<Group> sorted(const Passes& passes) const {
        std::vector<Group> found;
        for (const auto& group : groups_) {
            if (passes(group.rows)) found.push_back(group);
        }
        sort(found);
        return found;
    }
    std::vector<Group> sorted() const {
        return sorted([](RowSpan) { return true; });
    }

private:
    void fold(RowSpan rows, const std::vector<std::size_t>& ends);
    static void sort(std::vector<Group>& groups);

    std::string keys_;
    /// The rows of each group stand together.
    RowList rows_;
    std::vector<Group> groups_;
};

}  // namespace tolvane
