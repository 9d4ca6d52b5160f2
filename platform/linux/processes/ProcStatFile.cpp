#include "platform/linux/processes/ProcStatFile.h"

#include "base/files/Files.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::size_t procFileLimit = 65536;

}  // namespace

std::optional<ProcStat> readProcStat(const std::string& proc, Pid pid) {
    const auto text = Files::readKernelFile(proc + "/" + std::to_string(pid) + "/stat", procFileLimit);
    auto stat = text ? parseProcStat(*text) : std::nullopt;
    if (stat) stat->comm = {};
    return stat;
}

}  // namespace tolvane::linuxhost
