#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "base/Pid.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// Which process started which among the rows of one moment, as positions of rows. Built in one pass, whatever the
/// order of pids. A pid with several rows stands at its first one, its place. Refers to the rows, which outlive it.
/// Parents may form a ring, since a listing can catch a pid in two lives; every query still ends.
class ProcessTree {
public:
    using Place = std::uint32_t;

    /// Which row represents a pid that has several.
    enum class Repeated { first, last };

    explicit ProcessTree(const std::vector<ProcRow>& rows);

    /// Returns nullopt when no row has the pid.
    std::optional<Place> place(Pid pid) const;
    /// The place of the pid of the row at this position.
    Place placeOf(std::uint32_t row) const { return places_[row]; }
    std::optional<Place> parent(Place place) const;
    /// The rows whose parent has the place's pid, in row order.
    std::span<const std::uint32_t> children(Place place) const;

    /// Everything that the process started, directly or not: its children in row order, then the children of the last
    /// one, and so on from the back. Never the process itself, and never the children of one parent twice. The process
    /// needs no row; rows below another process without one are not found.
    std::vector<Pid> descendants(Pid pid) const;

    /// Whether the test holds for the row of any process above this row. The walk ends below pid 2, at a parent without
    /// a row, and when it comes back to the row's own pid.
    template <typename Test>
    bool anyAbove(std::uint32_t row, Repeated repeated, const Test& test) const {
        Place mark = none;
        std::size_t steps = 0;
        Place above = parents_[row];
        while (isProcess(above) && above != places_[row] && above != mark) {
            const std::uint32_t bearer = repeated == Repeated::first ? above : latest_[above];
            if (test(bearer)) return true;
            // Marks lie further and further apart, so a walk in a ring of any size meets one within a few turns.
            if (std::has_single_bit(++steps)) mark = above;
            above = parents_[bearer];
        }
        return false;
    }

private:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    bool hasRow(Place place) const { return place < places_.size(); }
    bool isProcess(Place place) const { return hasRow(place) && pids_[place] >= 2; }
    /// The cell of the pid, or the free cell where it belongs.
    std::size_t cell(Pid pid) const;
    void placeRows(const std::vector<ProcRow>& rows);
    void findParents(const std::vector<ProcRow>& rows);
    void listChildren();

    unsigned bits_ = 0;
    /// Hash table of places by pid, with `none` in free cells. It has more cells than there can be pids.
    std::vector<Place> table_;
    /// By place: one for each row, then one for each parent without a row.
    std::vector<Pid> pids_;
    /// By row.
    std::vector<Place> places_;
    std::vector<Place> parents_;
    /// By place: the last row with its pid.
    std::vector<std::uint32_t> latest_;
    /// The children of all places, one place after the other, and where those of each place end.
    std::vector<std::uint32_t> children_;
    std::vector<std::uint32_t> ends_;
};

}  // namespace tolvane
