#include <benchmark/benchmark.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "core/projects/ProjectLabels.h"
#include "core/rules/ClaudeRoster.h"
#include "core/rules/SessionLabels.h"
#include "core/sampling/UsageTracker.h"

// What a tick costs after the processes are read: comparing readings, naming sessions, naming projects.
// Time per process is the figure to watch; it must not grow with the number of processes.

namespace tolvane {
namespace {

/// As on hosts whose applications are folders; costs next to nothing itself.
class Bundles : public Applications {
public:
    std::optional<Text> appPath(Pid, std::string_view executable) override {
        const auto found = executable.find(".app/");
        if (found == std::string_view::npos) return std::nullopt;
        return Text(executable.substr(0, found + 4));
    }
    std::optional<Text> appID(std::string_view appPath) override { return Text(appPath); }
    std::string displayName(std::string_view appPath) override { return std::string(appPath); }
    std::string iconName(std::string_view) override { return {}; }
};

/// One process in four in an application, half of the others in some forty project folders, one in ten busy.
ProcSample sampleOf(Pid pid) {
    ProcSample sample;
    sample.pid = pid;
    sample.ppid = 1 + pid / 3;
    sample.uid = 501;
    sample.name = "process" + std::to_string(pid);
    const auto number = std::to_string(pid % 30);
    sample.path = pid % 4 == 0 ? "/opt/App" + number + ".app/Contents/MacOS/app" : "/opt/tools/bin/tool" + number;
    sample.args = TextList{"node", "/home/ada/src/server.js", "--port=" + number};
    if (pid % 2 == 0) sample.cwd = Text("/home/ada/src/project" + std::to_string(pid % 40) + "/packages/server");
    sample.startTime = Date{Seconds{790'000'000.0 + pid}};
    sample.footprint = 1'000'000;
    return sample;
}

class Tick {
public:
    explicit Tick(std::size_t count, std::size_t workers = 0) {
        for (std::size_t each = 0; each < count; ++each) samples_.push_back(sampleOf(static_cast<Pid>(2 + each)));
        for (std::size_t each = 0; each < workers; ++each) {
            auto& worker = workers_.emplace_back();
            worker.shortID = std::to_string(each);
            worker.hostPID = static_cast<Pid>(100 + each);
        }
    }

    std::vector<ProcSample> read() {
        now_ += Seconds{2};
        for (auto& sample : samples_) {
            if (sample.pid % 10 == 0) sample.cpuTimeNanos += 100'000'000;
        }
        return samples_;
    }

    std::vector<ProcRow> derive(std::vector<ProcSample>&& samples) {
        auto rows = tracker_.update(std::move(samples), now_);
        SessionLabels::apply(workers_, rows);
        projects_.apply(rows);
        return rows;
    }

private:
    std::vector<ProcSample> samples_;
    std::vector<ClaudeWorker> workers_;
    Bundles bundles_;
    UsageTracker tracker_{bundles_};
    ProjectLabels projects_{
        ProjectRoots("/home/ada", [](const std::string& path) { return path.ends_with("0/.git"); })};
    Date now_;
};

double secondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void countProcesses(benchmark::State& state) {
    state.counters["perProcess"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// A steady tick, the fresh copy of the samples not counted. The second argument is the number of agent workers.
void steadyTick(benchmark::State& state) {
    Tick tick(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    for (int warm = 0; warm < 3; ++warm) tick.derive(tick.read());
    std::vector<ProcRow> held;
    for (auto _ : state) {
        auto samples = tick.read();
        const auto begin = std::chrono::steady_clock::now();
        auto rows = tick.derive(std::move(samples));
        state.SetIterationTime(secondsSince(begin));
        held = std::move(rows);
    }
    countProcesses(state);
}
BENCHMARK(steadyTick)->ArgsProduct({{300, 1000, 5000}, {0, 20}})->UseManualTime();

/// The first tick of a run, when every process is new.
void firstTick(benchmark::State& state) {
    for (auto _ : state) {
        Tick tick(static_cast<std::size_t>(state.range(0)));
        auto samples = tick.read();
        const auto begin = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(tick.derive(std::move(samples)));
        state.SetIterationTime(secondsSince(begin));
    }
    countProcesses(state);
}
BENCHMARK(firstTick)->Arg(300)->Arg(1000)->Arg(5000)->UseManualTime();

/// Letting go of the rows that the next tick replaces.
void dropRows(benchmark::State& state) {
    Tick tick(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        auto rows = std::make_optional(tick.derive(tick.read()));
        const auto begin = std::chrono::steady_clock::now();
        rows.reset();
        state.SetIterationTime(secondsSince(begin));
    }
    countProcesses(state);
}
BENCHMARK(dropRows)->Arg(300)->Arg(1000)->Arg(5000)->UseManualTime();

}  // namespace
}  // namespace tolvane
