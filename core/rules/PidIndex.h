#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "core/sampling/ProcRow.h"
#include "platform/Pid.h"

namespace tolvane {

/// Positions of rows by a pid of theirs. Rows that share one stand in row order.
class PidIndex {
public:
    using Entry = std::pair<Pid, std::uint32_t>;

    static PidIndex byPid(const std::vector<ProcRow>& rows);
    static PidIndex byParent(const std::vector<ProcRow>& rows);

    std::span<const Entry> all(Pid pid) const;
    /// The position of the first row; none when there is no such row.
    const std::uint32_t* first(Pid pid) const;

private:
    explicit PidIndex(std::vector<Entry> entries);

    /// Ascending.
    std::vector<Entry> entries_;
};

}  // namespace tolvane
