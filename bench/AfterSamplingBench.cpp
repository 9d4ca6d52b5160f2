#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <vector>

#include "app/model/DayMoment.h"
#include "app/model/Observed.h"
#include "app/sampling/ProcessHistory.h"
#include "app/sampling/Snapshot.h"
#include "core/advisor/Advisor.h"
#include "core/history/HistoryMath.h"
#include "core/storage/Store.h"
#include "tests/fakes/TemporaryFolder.h"

// What the main thread does at every tick once a sample has arrived: it stores the snapshot, records the recent
// readings and the tracks, and judges swap over a day of moments. Watch the time per process.

namespace tolvane {
namespace {

constexpr Date start{Seconds{800'000'000}};

/// Two of ten processes are followed.
ProcRow rowOf(Pid pid, Date now) {
    ProcRow row;
    row.sample.pid = pid;
    row.sample.name = Text("process" + std::to_string(pid));
    row.sample.path = Text("/opt/tools/bin/tool" + std::to_string(pid % 30));
    row.sample.args = TextList{"node", "/home/ada/src/server.js"};
    row.sample.cwd = Text("/home/ada/src/project" + std::to_string(pid % 40));
    row.sample.startTime = start - Seconds{36'000};
    row.sample.footprint = pid % 5 == 0 ? 100'000'000 : 3'000'000;
    row.cpuPercent = pid % 10 == 0 ? 2.5 : 0;
    row.unusedSince = now;
    return row;
}

/// The same processes every tick, with shared cold facts as a reader provides them.
class Machine {
public:
    explicit Machine(std::size_t count) {
        for (std::size_t each = 0; each < count; ++each)
            latest_.rows.push_back(rowOf(static_cast<Pid>(2 + each), start));
        latest_.date = start;
    }
    Snapshot sample() {
        latest_.date += Seconds{5};
        for (auto& row : latest_.rows) row.sample.footprint += 4096;
        return latest_;
    }

private:
    Snapshot latest_;
};

std::vector<Moment> aDay() {
    std::vector<Moment> moments;
    for (int minute = 1440; minute >= 0; --minute) {
        auto& moment = moments.emplace_back();
        moment.date = start - Seconds{60.0 * minute};
        moment.swapIns = 0;
        moment.holders.resize(25);
    }
    return moments;
}

void perProcess(benchmark::State& state) {
    state.counters["per process"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void takeSnapshot(benchmark::State& state) {
    Machine machine(static_cast<std::size_t>(state.range(0)));
    Observed<Snapshot> latest;
    for (auto _ : state) {
        state.PauseTiming();
        auto next = machine.sample();
        state.ResumeTiming();
        latest.set(std::move(next));
    }
    perProcess(state);
}

void recordHistory(benchmark::State& state) {
    Machine machine(static_cast<std::size_t>(state.range(0)));
    Observed<ProcessHistory> history;
    auto next = machine.sample();
    for (auto _ : state) {
        next.date += Seconds{5};
        history.update([&](ProcessHistory& each) { each.record(next.rows, next.date); });
    }
    perProcess(state);
}

/// Once a minute: records who holds most behind a full day of earlier moments, drops the oldest one, and writes the
/// file.
void recordMoment(benchmark::State& state) {
    Machine machine(static_cast<std::size_t>(state.range(0)));
    const RowNames names{.application = [](std::string_view path) { return std::string(path); }, .home = "/home/ada"};
    const auto next = machine.sample();
    Observed<std::vector<Moment>> moments;
    moments.set(aDay());
    const fakes::TemporaryFolder folder;
    Store store(folder / "Tolvane");
    for (auto _ : state) {
        auto latest = momentOf(next, names, *moments);
        moments.update([&](std::vector<Moment>& each) {
            each.erase(each.begin());
            each.push_back(std::move(latest));
        });
        store.append(moments->back());
    }
    perProcess(state);
}

void judgeSwap(benchmark::State& state) {
    const auto moments = aDay();
    for (auto _ : state) {
        benchmark::DoNotOptimize(HistoryMath::swapGrowth(moments, 1 << 30, start));
        benchmark::DoNotOptimize(HistoryMath::readBack(moments, 1 << 30, start));
    }
}

void recordTracks(benchmark::State& state) {
    Machine machine(static_cast<std::size_t>(state.range(0)));
    Advisor advisor;
    auto next = machine.sample();
    for (auto _ : state) {
        next.date += Seconds{5};
        advisor.record(next.rows, next.date);
    }
    perProcess(state);
}

void copyRows(benchmark::State& state) {
    Machine machine(static_cast<std::size_t>(state.range(0)));
    const auto next = machine.sample();
    for (auto _ : state) benchmark::DoNotOptimize(std::vector<ProcRow>(next.rows));
    perProcess(state);
}

BENCHMARK(takeSnapshot)->Arg(300)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(recordHistory)->Arg(300)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(recordMoment)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(judgeSwap)->Unit(benchmark::kMicrosecond);
BENCHMARK(recordTracks)->Arg(300)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);
/// The cost of building a world for rules and advice.
BENCHMARK(copyRows)->Arg(300)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tolvane
