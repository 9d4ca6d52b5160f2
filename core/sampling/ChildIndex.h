#pragma once

#include <cstdint>
#include <vector>

#include "core/sampling/ProcRow.h"

namespace tolvane {

/// Who started whom among the rows of one moment: built once, asked for many processes.
/// Refers to the rows, which outlive it.
class ChildIndex {
public:
    explicit ChildIndex(const std::vector<ProcRow>& rows);

    /// All that the process started, and what those started: first its children in row order, then the children of
    /// the last one, and so on from the back. Never the process itself, and never anyone's children twice, so that
    /// a ring of parents ends. A row whose parent has no row is not found above that parent.
    std::vector<Pid> descendants(Pid pid) const;

private:
    struct Child {
        Pid ppid = 0;
        std::uint32_t row = 0;
        auto operator<=>(const Child&) const = default;
    };

    void appendChildren(Pid parent, Pid root, std::vector<Pid>& pids) const;

    const std::vector<ProcRow>& rows_;
    /// By parent, then in row order.
    std::vector<Child> children_;
};

}  // namespace tolvane
