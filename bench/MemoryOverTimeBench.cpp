#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "bench/CrowdHost.h"
#include "core/advisor/AdviceScene.h"
#include "core/advisor/Advisor.h"

// The cost of remembering and advising at every tick with all tracks full, and the memory that a day of it takes.

namespace tolvane {
namespace {

constexpr Date start{Seconds{800'000'000}};
constexpr std::uint64_t megabyte = 1U << 20U;
constexpr int fullTrack = 144;

ProcRow rowOf(Pid pid) {
    ProcRow row;
    row.sample.pid = pid;
    row.sample.ppid = pid % 3 == 0 ? 1 : pid / 4;
    row.sample.uid = 501;
    row.sample.name = Text("program" + std::to_string(pid % 200));
    row.sample.path = Text("/opt/tools/bin/tool" + std::to_string(pid % 30));
    const auto project = "/home/ada/src/project" + std::to_string(pid % 40);
    row.sample.args = TextList{"node", project + "/node_modules/.bin/vite", "--port=" + std::to_string(pid)};
    row.sample.startTime = start - Seconds{90'000};
    row.sample.footprint = (70 + static_cast<std::uint64_t>(pid) % 100) * megabyte;
    row.unusedSince = start - Seconds{static_cast<double>(pid % 5000)};
    if (pid % 5 == 0) {
        row.appPath = Text("/Applications/App" + std::to_string(pid % 30) + ".app");
        row.appID = Text("org.example.app" + std::to_string(pid % 30));
    } else if (pid % 2 == 0) {
        row.project = Text(project);
    }
    return row;
}

/// Processes followed for half a day; one in `grows` leaks.
struct Watched {
    World world{.selfPID = 99'999'999, .uid = 501};
    Advisor advisor;
    Date now = start;

    explicit Watched(std::int64_t count, int grows = 0) {
        for (Pid pid = 2; pid < count + 2; ++pid) world.rows.push_back(rowOf(pid));
        for (int step = 0; step < fullTrack; ++step) next(Seconds{300}, grows);
    }
    void next(Seconds passed, int grows) {
        now += passed;
        for (auto& row : world.rows) {
            if (grows > 0 && row.sample.pid % grows == 0) row.sample.footprint += 10 * megabyte;
            row.sample.perfTimeNanos += static_cast<std::uint64_t>(row.sample.pid % 7) * 10'000'000;
        }
        advisor.record(world.rows, now);
    }
};

void perProcess(benchmark::State& state) {
    state.counters["per process"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Every five minutes, when each track takes a point.
void recordFullTracks(benchmark::State& state) {
    Watched watched(state.range(0));
    for (auto _ : state) {
        watched.now += Seconds{300};
        watched.advisor.record(watched.world.rows, watched.now);
    }
    perProcess(state);
}

/// The ticks in between, when no track takes one.
void recordBetween(benchmark::State& state) {
    Watched watched(state.range(0));
    for (auto _ : state) watched.advisor.record(watched.world.rows, watched.now);
    perProcess(state);
}

/// The second argument: one process in so many leaks; 0 for none.
void suggestions(benchmark::State& state) {
    const Watched watched(state.range(0), static_cast<int>(state.range(1)));
    const SystemMemory memory{.total = 64ULL << 30U};
    const std::set<Pid> managed;
    const AdviceScene scene{.world = watched.world,
                            .memory = memory,
                            .now = watched.now,
                            .ports = {},
                            .locale = "en_US",
                            .managed = managed,
                            .simulatorName = {}};
    std::size_t found = 0;
    for (auto _ : state) found = watched.advisor.suggestions(scene).size();
    state.counters["found"] = static_cast<double>(found);
    perProcess(state);
}

/// Everything in a tick after the sample, at the pace of an open window. The most expensive tick is reported apart:
/// once a minute a moment is recorded, and every five minutes all tracks.
void afterTheSample(benchmark::State& state) {
    bench::CrowdHost crowd(static_cast<int>(state.range(0)));
    const AppModel model(crowd.host, *crowd.windows, false, crowd.executors());
    for (int point = 0; point < fullTrack; ++point) crowd.tick(Seconds{300});
    Seconds most{0};
    for (auto _ : state) {
        const auto took = crowd.tick(Seconds{5}).after;
        most = std::max(most, took);
        state.SetIterationTime(took.count());
    }
    state.counters["most"] = most.count();
    state.counters["suggestions"] = static_cast<double>(model.suggestions->size());
    perProcess(state);
}

double bytesInUse() {
    const auto use = mallinfo2();
    return static_cast<double>(use.uordblks + use.hblkhd);
}

/// What a day of ticks leaves in memory beyond the first one. The second argument: seconds between ticks.
void aDay(benchmark::State& state) {
    for (auto _ : state) {
        bench::CrowdHost crowd(static_cast<int>(state.range(0)));
        const AppModel model(crowd.host, *crowd.windows, false, crowd.executors());
        crowd.tick(Seconds{1});
        const double before = bytesInUse();
        const auto pace = static_cast<double>(state.range(1));
        for (double passed = 0; passed < 86'400; passed += pace) crowd.tick(Seconds{pace});
        state.counters["bytes"] = bytesInUse() - before;
        state.counters["moments"] = static_cast<double>(model.moments->size());
    }
}

BENCHMARK(recordFullTracks)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(recordBetween)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(suggestions)->ArgsProduct({{1000, 10000}, {0, 50}})->Unit(benchmark::kMicrosecond);
BENCHMARK(afterTheSample)->Arg(1000)->Arg(10000)->Iterations(120)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(aDay)->ArgsProduct({{1000}, {60, 5}})->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace tolvane
