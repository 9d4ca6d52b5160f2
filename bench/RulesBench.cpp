#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/MixedRules.h"
#include "core/rules/RuleEngine.h"
#include "core/rules/World.h"

// What rules cost in a tick: a hundred of them of all kinds, far more than anyone keeps, over a quiet machine (little
// meets the conditions) and over one where all rows meet all conditions, so that every text is looked at.

namespace tolvane {
namespace {

constexpr Date now{Seconds{800'000'000}};
constexpr std::uint64_t megabyte = 1U << 20U;

const std::vector<std::string> programs = {"node", "ruby",    "python3", "java", "postgres", "redis-server",
                                           "zsh",  "firefox", "code",    "sshd", "claude",   "docker-proxy"};

ProcRow rowOf(Pid pid) {
    const auto number = static_cast<std::size_t>(pid);
    const auto& program = programs[number % programs.size()];
    ProcRow row;
    row.sample.pid = pid;
    row.sample.ppid = pid < 20 ? 1 : pid / 4;
    row.sample.uid = number % 5 == 0 ? 0 : 1000;
    row.sample.name = program;
    row.sample.path = (number % 3 == 0 ? "/usr/bin/" : "/home/ada/.local/share/tools/versions/bin/") + program;
    row.sample.args =
        TextList{program, "/home/ada/src/project" + std::to_string(number % 40) + "/node_modules/.bin/tool.js",
                 "--Port=" + std::to_string(number), "--inspect=127.0.0.1:9229", "--max-old-space-size=4096"};
    row.sample.cwd = Text("/home/ada/src/project" + std::to_string(number % 40));
    row.sample.startTime = now - Seconds{3600.0 + pid};
    row.sample.footprint = (number % 200) * megabyte;
    row.unusedSince = now - Seconds{static_cast<double>(number % 3600)};
    if (number % 7 == 0) row.appID = Text("org.example.app" + std::to_string(number % 30));
    return row;
}

World worldOf(std::int64_t count) {
    World world;
    for (Pid pid = 2; pid < count + 2; ++pid) world.rows.push_back(rowOf(pid));
    world.uid = 1000;
    world.selfPID = 99999999;
    return world;
}

void decide(benchmark::State& state, const std::vector<Rule>& rules, const RuleEngine::FiredDates& fired = {}) {
    const auto world = worldOf(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(RuleEngine::decisions(rules, world, now, fired));
    state.counters["perRow"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void hundredQuietRules(benchmark::State& state) { decide(state, bench::mixedRules(100, 55, 150)); }
BENCHMARK(hundredQuietRules)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void hundredEagerRules(benchmark::State& state) { decide(state, bench::mixedRules(100, 0, 0)); }
BENCHMARK(hundredEagerRules)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// The tick after that: all of them fired a moment ago.
void hundredRulesThatFired(benchmark::State& state) {
    const auto rules = bench::mixedRules(100, 0, 0);
    RuleEngine::FiredDates fired;
    for (const auto& each : RuleEngine::decisions(rules, worldOf(state.range(0)), now, {})) {
        fired[RuleEngine::cooldownKey(each.rule, each.subjectKey)] = now;
    }
    decide(state, rules, fired);
}
BENCHMARK(hundredRulesThatFired)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// As many as people have.
void fivePresets(benchmark::State& state) {
    auto rules = Rule::presets();
    for (auto& rule : rules) rule.setMode(RuleMode::logOnly);
    decide(state, rules);
}
BENCHMARK(fivePresets)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void rulesThatAreOff(benchmark::State& state) { decide(state, Rule::presets()); }
BENCHMARK(rulesThatAreOff)->Arg(1000)->Unit(benchmark::kMicrosecond);

/// What the rules screen asks for the rule it shows.
void candidates(benchmark::State& state) {
    const auto world = worldOf(state.range(0));
    const Rule rule{.target = CommandTarget{{"project3"}}};
    for (auto _ : state) benchmark::DoNotOptimize(RuleEngine::candidates(rule, world));
}
BENCHMARK(candidates)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tolvane
