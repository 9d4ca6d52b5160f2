#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "base/Pid.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// Who started whom among the rows of one moment, as positions of rows: made in one pass, whatever the order of pids.
/// A pid with several rows stands at its first one, which is its place.
class ProcessTree {
public:
    using Place = std::uint32_t;

    explicit ProcessTree(const std::vector<ProcRow>& rows);

    /// None when there is no such row.
    std::optional<Place> place(Pid pid) const;
    /// Of the pid that the row at this position has.
    Place placeOf(std::uint32_t row) const { return places_[row]; }
    std::optional<Place> parent(Place place) const;
    /// The rows whose parent has the place's pid, in row order.
    std::span<const std::uint32_t> children(Place place) const;

private:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    /// Where the pid stands in the table, or the free cell where it belongs.
    std::size_t cell(Pid pid) const;
    void placeRows();
    void findParents();
    void listChildren();

    const std::vector<ProcRow>& rows_;
    unsigned bits_ = 0;
    /// Places by pid, scattered; `none` in free cells. At most half of them are taken.
    std::vector<Place> table_;
    std::vector<Place> places_;
    /// By row; `none` for a parent without a row.
    std::vector<Place> parents_;
    /// Children of all places, one place after the other, and where each place's end.
    std::vector<std::uint32_t> children_;
    std::vector<std::uint32_t> ends_;
};

}  // namespace tolvane
