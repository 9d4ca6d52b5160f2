#include "platform/linux/processes/ProcStat.h"

#include <array>

#include "base/files/Files.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::uint64_t kernelThreadFlag = 0x00200000;

/// Field numbers, counted from 1 as in the manual.
enum Field : std::size_t {
    parent = 4,
    session = 6,
    terminal = 7,
    flags = 9,
    minorFaults = 10,
    userTicks = 14,
    systemTicks = 15,
    threads = 20,
    startTicks = 22,
    residentPages = 24,
    startCode = 26,
    startStack = 28,
    argumentsStart = 48,
    fieldCount = 53,
};

using Fields = std::array<std::uint64_t, fieldCount>;

/// Parses the numbers from field `parent` on. Negative ones become 0: no field that we use can be negative.
/// False when the line ends before field `startStack`; later fields came with later kernels.
bool readFields(const char* at, const char* end, Fields& fields) {
    std::size_t index = parent;
    for (; index <= argumentsStart && at < end; ++index) {
        if (*at++ != ' ' || at == end) break;
        const bool negative = *at == '-';
        if (negative) ++at;
        const char* digits = at;
        std::uint64_t value = 0;
        while (at < end && *at >= '0' && *at <= '9') value = value * 10 + static_cast<std::uint64_t>(*at++ - '0');
        if (at == digits) break;
        fields[index] = negative ? 0 : value;
    }
    return index > startStack;
}

std::uint64_t mixed(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
    if ((a | b | c) <= 1) return 0;
    std::uint64_t value = a;
    for (const std::uint64_t next : {b, c}) value = (value ^ (value >> 29)) * 0xbf58476d1ce4e5b9ULL + next;
    value ^= value >> 32;
    return value == 0 ? 1 : value;
}

ProcStat fromFields(const Fields& fields) {
    return {.ppid = static_cast<Pid>(fields[parent]),
            .session = static_cast<Pid>(fields[session]),
            .terminal = static_cast<std::uint32_t>(fields[terminal]),
            .flags = fields[flags],
            .minorFaults = fields[minorFaults],
            .userTicks = fields[userTicks],
            .systemTicks = fields[systemTicks],
            .threads = fields[threads],
            .startTicks = fields[startTicks],
            .residentPages = fields[residentPages],
            .execStamp = mixed(fields[startCode], fields[startStack], fields[argumentsStart])};
}

}  // namespace

std::optional<ProcStat> parseProcStat(std::string_view line) {
    const auto open = line.find('(');
    // A name may contain brackets; the last one closes it, since only numbers follow.
    const auto close = line.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
    if (line.size() < close + 4) return std::nullopt;
    Fields fields{};
    if (!readFields(line.data() + close + 3, line.data() + line.size(), fields)) return std::nullopt;
    ProcStat stat = fromFields(fields);
    stat.pid = static_cast<Pid>(Scan::figure(line).value_or(0));
    stat.comm = line.substr(open + 1, close - open - 1);
    stat.state = line[close + 2];
    return stat;
}

bool ProcStat::isKernelThread() const { return (flags & kernelThreadFlag) != 0; }

bool ProcStat::isGone() const { return (state == 'Z' || state == 'X' || state == 'x') && threads <= 1; }

bool ProcStat::isOnPseudoTerminal() const {
    // Majors 136 to 143 are the pseudo terminals.
    const std::uint32_t major = (terminal >> 8) & 0xfff;
    return major >= 136 && major <= 143;
}

std::optional<ProcStat> readProcStat(const std::string& proc, Pid pid) {
    constexpr std::size_t limit = 65536;
    const auto text = Files::readKernelFile(proc + "/" + std::to_string(pid) + "/stat", limit);
    auto stat = text ? parseProcStat(*text) : std::nullopt;
    if (stat) stat->comm = {};
    return stat;
}

}  // namespace tolvane::linuxhost
