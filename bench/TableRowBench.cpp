#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <vector>

#include "app/rows/Format.h"
#include "app/rows/TableRow.h"
#include "app/screens/processes/ProcessesView.h"

/// What a redraw of the processes table costs: folding, sorting and searching the rows of one tick, and the words of
/// its cells. Arguments are the number of processes and the grouping.
namespace tolvane {
namespace {

constexpr std::string_view locale = "en_US";

/// A developer's machine: a third of the processes in applications, some in projects and sessions, command lines of
/// the usual length of two hundred bytes.
ProcRow madeUpRow(int number) {
    ProcRow row;
    row.sample.pid = 1000 + number;
    row.sample.ppid = 1;
    row.sample.uid = 501;
    row.sample.name = Text("process" + std::to_string(number % 90));
    row.sample.path = Text("/opt/tools/lib/programs/bin/process" + std::to_string(number % 90));
    row.sample.args = {"/opt/tools/bin/node", "/home/ada/src/shop/node_modules/.bin/some-server-with-a-name",
                       "--inspect-port=" + std::to_string(number),
                       "--config=/home/ada/src/shop/config/environments/development/server.config.json",
                       "--log-level=warning"};
    row.sample.startTime = Date{Seconds{790'000'000.0 + number}};
    row.sample.footprint = static_cast<std::uint64_t>(number) * 7919 % 4096 * 1024 * 256;
    row.sample.compressed = row.sample.footprint / 3;
    row.cpuPercent = number % 17 == 0 ? number % 90 : 0;
    row.unusedSince = Date{Seconds{799'000'000.0 - number}};
    if (number % 3 == 0) row.appPath = Text("/Applications/App" + std::to_string(number % 60) + ".app");
    if (number % 5 == 1) row.project = Text("/home/ada/src/project" + std::to_string(number % 20));
    if (number % 40 == 2) row.claudeSession = Text("session " + std::to_string(number % 7));
    return row;
}

Snapshot snapshotOf(std::int64_t count) {
    Snapshot snapshot{.date = Date{Seconds{800'000'000}}};
    for (int number = 0; number < count; ++number) snapshot.rows.push_back(madeUpRow(number));
    snapshot.memory.compressionRatio = 2.5;
    return snapshot;
}

const RowNames names{.application = [](std::string_view path) { return std::string(path.substr(14)); },
                     .home = "/home/ada"};

const std::vector<RowOrder> byMemory = {RowOrder{}};

void build(benchmark::State& state) {
    const auto snapshot = snapshotOf(state.range(0));
    const auto grouping = static_cast<Grouping>(state.range(1));
    for (auto _ : state) benchmark::DoNotOptimize(TableRow::build(snapshot.rows, grouping, 2.5, names));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void buildAndSort(benchmark::State& state) {
    const auto snapshot = snapshotOf(state.range(0));
    const auto grouping = static_cast<Grouping>(state.range(1));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ProcessesView::rowsOf(snapshot, grouping, "", byMemory, names, locale));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void search(benchmark::State& state, std::string_view wanted, std::string_view inLocale) {
    const auto snapshot = snapshotOf(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ProcessesView::rowsOf(snapshot, Grouping::apps, wanted, byMemory, names, inLocale));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void selectAll(benchmark::State& state) {
    const auto lines = ProcessesView::rowsOf(snapshotOf(state.range(0)), Grouping::apps, "", byMemory, names, locale);
    std::set<std::string> ids;
    for (const auto& line : lines) ids.insert(line.id);
    for (auto _ : state) benchmark::DoNotOptimize(TableRow::selected(ids, lines));
}

/// The cells of the forty lines that a window shows.
void cells(benchmark::State& state) {
    const auto snapshot = snapshotOf(1000);
    auto lines = ProcessesView::rowsOf(snapshot, Grouping::all, "", byMemory, names, locale);
    lines.resize(40);
    for (auto _ : state) {
        for (const auto& line : lines) {
            for (const auto& each : processColumns) {
                benchmark::DoNotOptimize(ProcessesView::cellOf(line, each.column, snapshot.date, locale));
            }
        }
    }
}

void bytes(benchmark::State& state) {
    std::uint64_t value = 1;
    for (auto _ : state) benchmark::DoNotOptimize(Format::bytes(value = value * 7 % 99'999'999'977, locale));
}

BENCHMARK(build)->ArgsProduct({{300, 1000, 5000}, {0, 1, 2}})->Unit(benchmark::kMicrosecond);
BENCHMARK(buildAndSort)->ArgsProduct({{300, 1000, 5000}, {0, 1, 2}})->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, many, "server", "en_US")->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, none, "no such process", "en_US")->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, accented, "gérer", "fr_FR")->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, turkish, "Işlem", "tr_TR")->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(selectAll)->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(cells)->Unit(benchmark::kMicrosecond);
BENCHMARK(bytes);

}  // namespace
}  // namespace tolvane
