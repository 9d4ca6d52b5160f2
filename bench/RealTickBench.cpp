#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "bench/CrowdHost.h"
#include "bench/Measured.h"
#include "bench/MixedRules.h"
#include "core/rules/RuleEngine.h"
#include "core/storage/Store.h"

// The cost of a tick after its sample, beside that sample, in one run over real processes from the program
// `population`. All tracks are full, and a hundred rules of all kinds watch and only log. Measured in CPU time of the
// thread.

namespace tolvane {
namespace {

constexpr int fullTrack = 144;
/// An hour at the pace of an open window: a moment is recorded every twelfth tick, all tracks every sixtieth.
constexpr int ticks = 720;

struct Totals {
    Seconds sample{0};
    Seconds after{0};
    Seconds decisions{0};
    Seconds mostSample{0};
    Seconds mostAfter{0};
    int count = 0;

    void add(const bench::CrowdHost::Times& times) {
        sample += times.sample;
        after += times.after;
        mostSample = std::max(mostSample, times.sample);
        mostAfter = std::max(mostAfter, times.after);
        ++count;
    }
};

constexpr double milliseconds(Seconds span) { return span.count() * 1e3; }

void report(benchmark::State& state, const Totals& totals, const AppModel& model) {
    state.counters["processes"] = static_cast<double>(model.snapshot->rows.size());
    state.counters["sample ms"] = milliseconds(totals.sample) / totals.count;
    state.counters["after ms"] = milliseconds(totals.after) / totals.count;
    state.counters["most sample ms"] = milliseconds(totals.mostSample);
    state.counters["most after ms"] = milliseconds(totals.mostAfter);
    state.counters["after / sample"] = totals.after / totals.sample;
    state.counters["most / mean sample"] = totals.mostAfter / (totals.sample / totals.count);
    state.counters["decisions ms"] = milliseconds(totals.decisions) / totals.count;
    state.counters["decisions / sample"] = totals.decisions / totals.sample;
}

/// Arguments: the number of processes, and of control groups that they are spread over.
void tickOfRealProcesses(benchmark::State& state) {
    std::vector<std::string> arguments{std::to_string(state.range(0))};
    if (state.range(1) > 0) arguments.insert(arguments.end(), {"--groups", std::to_string(state.range(1))});
    arguments.insert(arguments.end(), {"--stir", "10"});
    const bench::RunningPopulation population(arguments);
    for (auto _ : state) {
        bench::CrowdHost crowd;
        const auto rules = bench::mixedRules(100, 55, 150);
        Store(crowd.storeFolder()).saveRules(rules);
        const AppModel model(crowd.host, *crowd.windows, false, crowd.executors());
        if (model.rules->size() != rules.size()) return state.SkipWithError("the rules were not loaded");
        for (int point = 0; point < fullTrack; ++point) crowd.tick(Seconds{300});
        Totals totals;
        for (int tick = 0; tick < ticks; ++tick) {
            totals.add(crowd.tick(Seconds{5}));
            const auto begin = bench::threadTime();
            const auto world = model.world();
            benchmark::DoNotOptimize(RuleEngine::decisions(rules, world, model.snapshot->date, {}));
            totals.decisions += bench::threadTime() - begin;
        }
        report(state, totals, model);
    }
}

BENCHMARK(tickOfRealProcesses)
    ->Args({1000, 0})
    ->Args({1000, 60})
    ->Iterations(1)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kSecond);

}  // namespace
}  // namespace tolvane
