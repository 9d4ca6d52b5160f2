#include "platform/linux/processes/ProcTable.h"

namespace tolvane::linuxhost {

bool ProcTable::sameAs(const std::vector<Pid>& listing) const {
    return std::ranges::equal(listing, rows_, {}, {}, &ProcEntry::pid);
}

ProcEntry* ProcTable::find(Pid pid) {
    for (std::size_t step = 0; step < 2 && cursor_ + step < rows_.size(); ++step) {
        if (rows_[cursor_ + step].pid != pid) continue;
        cursor_ += step;
        return &rows_[cursor_];
    }
    ProcEntry* row = peek(pid);
    if (row) cursor_ = static_cast<std::size_t>(row - rows_.data());
    return row;
}

ProcEntry* ProcTable::peek(Pid pid) {
    const auto row = std::ranges::lower_bound(rows_, pid, {}, &ProcEntry::pid);
    return row != rows_.end() && row->pid == pid ? &*row : nullptr;
}

void ProcTable::orphanChildrenOf(std::span<const Pid> parents) {
    if (parents.empty()) return;
    for (ProcEntry& row : rows_) {
        if (std::ranges::binary_search(parents, row.ppid)) row.orphaned = true;
    }
}

}  // namespace tolvane::linuxhost
