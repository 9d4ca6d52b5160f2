// One sweep over this Mac, printed: the first thing to try on a new machine or a new system.

#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <cstdio>

#include "core/sampling/ProcessReader.h"
#include "core/sampling/SystemMemory.h"
#include "platform/macos/makeMacHost.h"

using namespace tolvane;

namespace {

constexpr std::uint64_t megabyte = 1U << 20U;

void printMachine(const MachineStatistics& machine) {
    const auto memory = SystemMemory::read(machine);
    const auto cores = machine.ticksPerCore();
    std::printf("memory %" PRIu64 " MB, app %" PRIu64 ", wired %" PRIu64 ", compressed %" PRIu64 "\n",
                memory.total / megabyte, memory.app / megabyte, memory.wired / megabyte, memory.compressed / megabyte);
    std::printf("swap %" PRIu64 " of %" PRIu64 " MB, pressure level %d\n", memory.swapUsed / megabyte,
                memory.swapTotal / megabyte, static_cast<int>(memory.pressure));
    std::printf("%d active cores, %d of them for efficiency, ticks of %zu\n", machine.activeCores(),
                machine.efficiencyCores().value_or(0), cores ? cores->size() : 0);
}

void print(const ProcSample& sample, const std::vector<int>& ports) {
    std::printf("%6d %6d %5u %7" PRIu64 " MB %7" PRIu64 " MB  %-24s %zu args, %zu ports, %s\n", sample.pid, sample.ppid,
                sample.uid, sample.footprint / megabyte, sample.compressed / megabyte, sample.name.str().c_str(),
                sample.args.size(), ports.size(), sample.cwd ? sample.cwd->str().c_str() : "no folder");
}

}  // namespace

int main() {
    const auto host = machost::makeMacHost({}, [](const std::function<void()>& job) { job(); });
    const auto inspection = host.makeInspection();
    ProcessReader reader(*inspection, host.machine->efficiencyCores().has_value());
    printMachine(*host.machine);
    const auto begin = std::chrono::steady_clock::now();
    auto samples = reader.readAll();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    std::ranges::sort(samples, std::ranges::greater{}, &ProcSample::footprint);
    for (const auto& sample : samples) print(sample, ProcessReader::listeningPorts(*inspection, sample.pid));
    std::printf("%zu processes in %.1f ms\n", samples.size(), took.count());
    return samples.empty() ? 1 : 0;
}
