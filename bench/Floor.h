#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Pid.h"
#include "platform/linux/processes/ProcFiles.h"

namespace tolvane::bench {

/// What a plain reader does that keeps nothing: list, and of every process `stat`, `statm`, the executable's and the
/// working folder's link, each opened, read and parsed anew. The yardstick beside which sweeps are measured; machines
/// and moments differ, ratios within one run do not.
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
