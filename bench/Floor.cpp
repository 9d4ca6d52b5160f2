#include "bench/Floor.h"

#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::bench {

using linuxhost::PidPath;

const std::vector<Floor::Row>& Floor::sweep() {
    files_.listPids(listing_);
    rows_.resize(listing_.size());
    std::size_t count = 0;
    for (const Pid pid : listing_) {
        rows_[count].pid = pid;
        if (readInto(rows_[count])) ++count;
    }
    rows_.resize(count);
    return rows_;
}

bool Floor::readInto(Row& row) {
    const auto line = files_.read(PidPath(row.pid, "stat"));
    const auto stat = line ? linuxhost::parseProcStat(*line) : std::nullopt;
    if (!stat) return false;
    row.ppid = stat->ppid;
    row.start = stat->startTicks;
    row.cpu = stat->userTicks + stat->systemTicks;
    row.executable.clear();
    row.folder.clear();
    // Kernel threads have neither memory nor links; asking would only raise the floor.
    if (stat->isKernelThread()) return true;
    auto pages = files_.read(PidPath(row.pid, "statm")).value_or(std::string_view{});
    linuxhost::Scan::word(pages);
    const auto resident = linuxhost::Scan::figure(linuxhost::Scan::word(pages)).value_or(0);
    const auto shared = linuxhost::Scan::figure(linuxhost::Scan::word(pages)).value_or(0);
    row.anonymous = (resident - shared) * 4096;
    if (const auto link = files_.readLink(PidPath(row.pid, "exe"))) row.executable = *link;
    if (const auto link = files_.readLink(PidPath(row.pid, "cwd"))) row.folder = *link;
    return true;
}

}  // namespace tolvane::bench
