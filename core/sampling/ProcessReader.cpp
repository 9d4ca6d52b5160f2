#include "core/sampling/ProcessReader.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/Paths.h"

namespace tolvane {

namespace {

std::uint64_t nanosOf(std::uint64_t ticks, double nanosPerTick) {
    const double nanos = nanosPerTick * static_cast<double>(ticks);
    // Converting a double too large for the integer is undefined.
    if (nanos >= 0x1p64) return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(nanos);
}

std::optional<Text> unlessEmpty(std::optional<Text> text) {
    if (text && text->empty()) text.reset();
    return text;
}

}  // namespace

ProcessReader::ProcessReader(ProcessInspection& inspection, bool hybrid)
    : inspection_(inspection), nanosPerTick_(inspection.nanosPerTick()), hybrid_(hybrid) {}

std::vector<ProcSample> ProcessReader::readAll() {
    ++sweep_;
    const auto pids = inspection_.allPids();
    std::vector<ProcSample> samples;
    samples.reserve(pids.size());
    for (const Pid pid : pids) {
        if (!readInto(samples.emplace_back(), pid)) samples.pop_back();
    }
    argsCache_.settleWithout([&](const Arguments& each) { return each.sweep != sweep_; });
    return samples;
}

std::optional<ProcSample> ProcessReader::read(Pid pid) {
    std::optional<ProcSample> sample(std::in_place);
    if (!readInto(*sample, pid)) sample.reset();
    argsCache_.settle();
    return sample;
}

bool ProcessReader::readInto(ProcSample& sample, Pid pid) {
    if (pid < 1) return false;
    auto record = inspection_.bsdRecord(pid);
    if (!record) return false;
    const auto usage = inspection_.usage(pid);
    if (!usage) return false;
    sample.pid = pid;
    sample.ppid = record->ppid;
    sample.uid = record->uid;
    sample.startTime = record->startTime;
    sample.path = inspection_.executablePath(pid).value_or(Text());
    sample.args = argumentsOf(pid, *record);
    sample.name = record->name.empty() ? Text(Paths::lastComponent(sample.path)) : std::move(record->name);
    takeUsage(sample, *usage);
    takeMemory(sample);
    sample.cwd = unlessEmpty(inspection_.workingDirectory(pid));
    sample.hostSaysSystem = inspection_.belongsToSystem(pid);
    return true;
}

void ProcessReader::takeUsage(ProcSample& sample, const UsageRecord& usage) const {
    sample.footprint = usage.footprint;
    sample.peakFootprint = usage.peakFootprint;
    sample.cpuTimeNanos = nanosOf(usage.userTime + usage.systemTime, nanosPerTick_);
    sample.perfTimeNanos =
        hybrid_ ? nanosOf(usage.performanceUserTime + usage.performanceSystemTime, nanosPerTick_) : sample.cpuTimeNanos;
}

void ProcessReader::takeMemory(ProcSample& sample) {
    const auto memory = inspection_.memoryRecord(sample.pid).value_or(MemoryRecord{});
    sample.compressed = memory.compressed;
    sample.swapIns = static_cast<std::uint64_t>(std::max<std::int64_t>(0, memory.swapIns));
}

TextList ProcessReader::argumentsOf(Pid pid, const BSDRecord& record) {
    auto* known = argsCache_.find(pid);
    if (known && known->startTime == record.startTime && known->programStamp == record.programStamp) {
        known->sweep = sweep_;
        return known->args;
    }
    Arguments read{.pid = pid,
                   .sweep = sweep_,
                   .startTime = record.startTime,
                   .programStamp = record.programStamp,
                   .args = inspection_.arguments(pid).value_or(TextList())};
    auto args = read.args;
    if (known) {
        *known = std::move(read);
    } else {
        argsCache_.add(std::move(read));
    }
    return args;
}

std::vector<std::string> ProcessReader::environment(ProcessInspection& inspection, Pid pid) {
    return inspection.environment(pid).value_or(std::vector<std::string>{});
}

namespace {

/// Sorts the ports and removes repeats.
void tidy(std::vector<int>& ports) {
    constexpr int portBits = 0xFFFF;
    for (int& port : ports) port &= portBits;
    std::ranges::sort(ports);
    const auto repeats = std::ranges::unique(ports);
    ports.erase(repeats.begin(), repeats.end());
}

}  // namespace

std::vector<int> ProcessReader::listeningPorts(ProcessInspection& inspection, Pid pid) {
    auto ports = inspection.listeningPorts(pid);
    tidy(ports);
    return ports;
}

std::map<Pid, std::vector<int>> ProcessReader::listeningPorts(ProcessInspection& inspection,
                                                              const std::vector<Pid>& pids) {
    auto portsByPid = inspection.listeningPortsOf(pids);
    for (auto& [pid, ports] : portsByPid) tidy(ports);
    return portsByPid;
}

}  // namespace tolvane
