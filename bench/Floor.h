#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Pid.h"
#include "platform/linux/processes/ProcFiles.h"

namespace tolvane::bench {

/// What a plain reader does that caches nothing: list the processes and, for each one, open, read and parse `stat`,
/// `statm` and the links to its executable and working folder. Sweeps are measured beside it; machines and moments
/// differ, ratios within one run do not.
class Floor {
public:
    struct Row {
        Pid pid = 0;
        Pid ppid = 0;
        std::uint64_t start = 0;
        std::uint64_t cpu = 0;
        std::uint64_t anonymous = 0;
        std::string executable;
        std::string folder;
    };

    Floor() : files_("/proc") {}

    const std::vector<Row>& sweep();

private:
    bool readInto(Row& row);

    linuxhost::ProcFiles files_;
    std::vector<Pid> listing_;
    std::vector<Row> rows_;
};

}  // namespace tolvane::bench
