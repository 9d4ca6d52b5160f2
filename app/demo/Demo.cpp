#include "app/demo/Demo.h"

#include <algorithm>
#include <utility>

namespace tolvane::Demo {

namespace {

constexpr double mebibyte = 1'048'576;
constexpr double secondsPerHour = 3600, secondsPerMinute = 60, nanosPerSecond = 1e9;

std::uint64_t bytes(double mebibytes) { return static_cast<std::uint64_t>(mebibytes * mebibyte); }

std::optional<Text> text(const std::optional<std::string>& given) {
    return given ? std::optional<Text>(Text(*given)) : std::nullopt;
}

std::vector<std::string_view> views(const std::vector<std::string>& texts) { return {texts.begin(), texts.end()}; }

CPULoad load() {
    return {.user = 0.26, .system = 0.065, .cores = 12, .performance = 2.6, .efficiency = 1.3, .efficiencyCores = 4};
}

std::vector<ClaudeWorker> workers(const Place& place) {
    const auto folders = Roots::in(place);
    return {{.shortID = "9c1d",
             .name = "Checkout flow refactor",
             .cwd = folders.atlas,
             .hostPID = 80110,
             .hasPrompt = true},
            {.shortID = "4f2a", .hostPID = 80440},
            {.shortID = "b70e", .name = "Invoices", .cwd = folders.billing, .hostPID = 80502, .hasPrompt = true}};
}

}  // namespace

ProcRow row(const Proc& proc, Date now) {
    ProcRow row;
    auto& sample = row.sample;
    sample.pid = proc.pid;
    sample.ppid = proc.ppid;
    sample.uid = proc.uid;
    sample.name = proc.name;
    sample.path = proc.path;
    sample.args = TextList(views(proc.args));
    sample.cwd = text(proc.cwd);
    sample.startTime = now - Seconds{proc.startedHours * secondsPerHour};
    sample.footprint = bytes(proc.mb);
    sample.compressed = bytes(proc.compressedMB);
    sample.peakFootprint = sample.footprint + sample.footprint / 16;
    sample.cpuTimeNanos =
        static_cast<std::uint64_t>(proc.cpu / 100 * proc.startedHours * secondsPerHour * nanosPerSecond);
    sample.perfTimeNanos = sample.cpuTimeNanos;
    row.cpuPercent = proc.cpu;
    row.perfPercent = proc.cpu * 0.7;
    row.unusedSince = now - Seconds{proc.unusedMinutes * secondsPerMinute};
    row.appPath = text(proc.appPath);
    row.appID = text(proc.appID);
    row.project = text(proc.project);
    row.claudeSession = text(proc.session);
    return row;
}

SystemMemory memory() {
    constexpr double gibibyte = 1024;
    return {.total = bytes(32 * gibibyte),
            .app = bytes(13.2 * gibibyte),
            .wired = bytes(3.34 * gibibyte),
            .compressed = bytes(4.86 * gibibyte),
            .swapUsed = bytes(2.12 * gibibyte),
            .swapTotal = bytes(3 * gibibyte),
            .swapIns = bytes(9.4 * gibibyte),
            .pressure = Pressure::normal,
            .compressionRatio = 3.1};
}

State state(Date now, const Place& place) {
    const auto procs = processes(place);
    State made;
    made.snapshot = {.date = now, .memory = memory(), .cpu = load(), .rows = {}, .claude = workers(place)};
    for (const auto& proc : procs) made.snapshot.rows.push_back(row(proc, now));
    made.history = history(procs, now);
    made.loadHistory = loadHistory(now);
    made.moments = moments(procs, now);
    made.rules = rules();
    made.activity = activity(now);
    made.parked = parked(now, place);
    made.containers = containers(place);
    made.branches = branches(place);
    made.ports = ports();
    made.swapGrowth = static_cast<std::int64_t>(bytes(310));
    made.selectedRows = {"project:" + Roots::in(place).atlas};
    return made;
}

Advisor advisor(Date now, const Place& place) {
    constexpr double hoursWatched = 6, minutesBetween = 5;
    Advisor advisor;
    const auto procs = processes(place);
    for (double ago = hoursWatched * 60; ago >= 0; ago -= minutesBetween) {
        const Seconds since{ago * secondsPerMinute};
        std::vector<ProcRow> rows;
        for (const auto& proc : procs) {
            if (proc.startedHours * secondsPerHour < since.count()) continue;
            auto then = row(proc, now);
            then.sample.footprint = bytes(proc.mb * proc.shape(ago));
            then.sample.perfTimeNanos -= std::min(
                then.sample.perfTimeNanos, static_cast<std::uint64_t>(proc.cpu / 100 * since.count() * nanosPerSecond));
            rows.push_back(std::move(then));
        }
        advisor.record(rows, now - since);
    }
    return advisor;
}

}  // namespace tolvane::Demo
