#include <benchmark/benchmark.h>

#include <fstream>
#include <iterator>
#include <string>

#include "platform/linux/processes/CommandLine.h"
#include "platform/linux/processes/ListeningSockets.h"
#include "platform/linux/processes/MemoryMoves.h"
#include "platform/linux/processes/ProcCgroup.h"
#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/processes/ProcStatus.h"

/// The pure part of reading a process: it should stay far below the microseconds that the kernel takes to write the
/// same text.
namespace tolvane::linuxhost {
namespace {

std::string recorded(const std::string& name) {
    std::ifstream file(TOLVANE_FIXTURES "/linux/processes/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void stat(benchmark::State& state) {
    const auto line = recorded("stat-shell");
    for (auto _ : state) benchmark::DoNotOptimize(parseProcStat(line));
}

void status(benchmark::State& state) {
    const auto text = recorded("status-shell");
    for (auto _ : state) benchmark::DoNotOptimize(parseProcStatus(text));
}

void group(benchmark::State& state) {
    const auto text = recorded("cgroup-application");
    for (auto _ : state) benchmark::DoNotOptimize(unitFacts(parseProcCgroup(text).unit()));
}

void memoryMoves(benchmark::State& state) {
    const auto text = recorded("vmstat");
    for (auto _ : state) benchmark::DoNotOptimize(anonymousMoves(text));
}

void sockets(benchmark::State& state) {
    const auto table = recorded("net-tcp");
    std::vector<ListeningSocket> found;
    for (auto _ : state) {
        found.clear();
        appendListening(table, found);
        benchmark::DoNotOptimize(found.data());
    }
}

BENCHMARK(stat)->Name("parse/stat");
BENCHMARK(status)->Name("parse/status");
BENCHMARK(group)->Name("parse/cgroup");
BENCHMARK(memoryMoves)->Name("parse/vmstat");
BENCHMARK(sockets)->Name("parse/tcp");

}  // namespace
}  // namespace tolvane::linuxhost
