#include "tests/fakes/SampleCast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

namespace tolvane::fakes {

namespace {

constexpr double megabyte = 1048576;
constexpr double gigabyte = 1024;
constexpr double hours = 60, days = 24 * hours;

struct Actor {
    Pid pid;
    std::string_view name;
    /// Name of the application; empty outside applications.
    std::string_view app;
    /// Folder below "/home/ada/Developer"; empty outside projects.
    std::string_view project;
    std::string_view session;
    double megabytes, compressedMegabytes, cpu, unusedMinutes, startedMinutes;
};

constexpr std::array cast = {
    Actor{1204, "Google Chrome", "Google Chrome", "", "", 1.9 * gigabyte, 204, 7.1, 0, 2 * days + 4 * hours},
    Actor{1310, "Google Chrome Helper", "Google Chrome", "", "", 1.6 * gigabyte, 410, 4.1, 0.5, 2 * days},
    Actor{1311, "Google Chrome Helper", "Google Chrome", "", "", 1.31 * gigabyte, 430, 1.2, 3, 2 * days},
    Actor{48120, "Xcode", "Xcode", "", "", 3.64 * gigabyte, 418.2, 118.6, 4, 6 * hours + 12},
    Actor{61544, "node", "", "docs-site", "", 1.84 * gigabyte, 968, 0.2, 5 * hours + 40, 1 * days + 2 * hours},
    Actor{71302, "node", "", "atlas-web", "", 612.4, 108.6, 8.6, 2, 7 * hours + 3},
    Actor{71377, "node", "", "mobile-app", "", 438, 204.9, 0.4, 38, 7 * hours + 1},
    Actor{69018, "node", "", "atlas-web", "", 251.7, 124.8, 0, 3 * hours + 12, 9 * hours + 44},
    Actor{71420, "node", "", "billing-api", "", 168.3, 40.2, 0, 2 * hours + 41, 6 * hours + 58},
    Actor{2208, "Microsoft Teams", "Microsoft Teams", "", "", 901, 620, 0.3, 6 * hours + 5, 2 * days + 4 * hours},
    Actor{2215, "Microsoft Teams WebView Helper", "Microsoft Teams", "", "", 758, 506, 0.1, 6 * hours + 9, 2 * days},
    Actor{80110, "claude", "", "atlas-web", "Checkout flow refactor", 642, 96, 30.9, 0.2, 4 * hours + 20},
    Actor{80440, "claude", "", "", "Claude 4f2a, no prompt yet", 284.6, 80, 0.1, 51, 55},
    Actor{80502, "claude", "", "billing-api", "Invoices", 281, 38.6, 0.2, 12, 70},
    Actor{1890, "Slack", "Slack", "", "", 402, 211, 0.6, 47, 2 * days + 4 * hours},
    Actor{1911, "Slack Helper (GPU)", "Slack", "", "", 228, 120, 0.2, 47, 2 * days + 4 * hours},
    Actor{1912, "Slack Helper (Renderer)", "Slack", "", "", 401, 214, 0.1, 51, 2 * days + 4 * hours},
    Actor{1913, "Slack Helper", "Slack", "", "", 85, 43.1, 0, 90, 2 * days + 4 * hours},
    Actor{3002, "Docker Desktop", "Docker Desktop", "", "", 188, 40, 0.4, 78, 2 * days + 4 * hours},
    Actor{3010, "com.docker.backend", "Docker Desktop", "", "", 780.2, 43.4, 138.8, 78, 2 * days + 4 * hours},
    Actor{70221, "ruby", "", "billing-api", "", 371.4, 30.9, 38.2, 0.1, 6 * hours + 58},
    Actor{70222, "ruby", "", "billing-api", "", 190.2, 26, 0.2, 4, 6 * hours + 58},
    Actor{70223, "ruby", "", "billing-api", "", 181.3, 25, 0, 9, 6 * hours + 58},
    Actor{391, "WindowServer", "", "", "", 688.5, 70.8, 16.7, 0, 2 * days + 4 * hours},
    Actor{2501, "Spotify", "Spotify", "", "", 301.2, 140, 0.2, 38, 1 * days + 4 * hours},
    Actor{2502, "Spotify Helper (Renderer)", "Spotify", "", "", 240.4, 122, 0.1, 38, 1 * days + 4 * hours},
    Actor{702, "postgres", "", "", "", 212.8, 60, 0.1, 22, 2 * days + 4 * hours},
    Actor{71333, "esbuild", "", "atlas-web", "", 96.3, 4, 0, 2, 7 * hours},
    Actor{80155, "mcp-server-github", "", "", "Checkout flow refactor", 88.1, 30, 0, 41, 4 * hours},
    Actor{2700, "Mail", "Mail", "", "", 402.7, 96, 0.3, 14, 2 * days + 3 * hours},
};

Date before(Date now, double minutes) { return now - Seconds{minutes * 60}; }

std::string appPath(std::string_view app) { return "/Applications/" + std::string(app) + ".app"; }

std::string executable(const Actor& actor) {
    return actor.app.empty() ? "/opt/" + std::string(actor.name)
                             : appPath(actor.app) + "/Contents/MacOS/" + std::string(actor.name);
}

ProcRow row(const Actor& actor, Date now) {
    ProcRow row;
    row.sample.pid = actor.pid;
    row.sample.ppid = 1;
    row.sample.uid = 501;
    row.sample.name = actor.name;
    row.sample.path = executable(actor);
    row.sample.args = TextList({row.sample.path.view(), "--port", "5173"});
    row.sample.startTime = before(now, actor.startedMinutes);
    row.sample.footprint = static_cast<std::uint64_t>(actor.megabytes * megabyte);
    row.sample.compressed = static_cast<std::uint64_t>(actor.compressedMegabytes * megabyte);
    row.sample.peakFootprint = row.sample.footprint + row.sample.footprint / 90;
    row.cpuPercent = actor.cpu;
    row.perfPercent = actor.cpu / 2;
    row.unusedSince = before(now, actor.unusedMinutes);
    if (!actor.app.empty()) row.appPath = Text(appPath(actor.app));
    if (!actor.app.empty()) row.appID = Text("com.example." + std::string(actor.name));
    if (!actor.project.empty()) row.project = Text("/home/ada/Developer/" + std::string(actor.project));
    if (!actor.project.empty()) row.sample.cwd = row.project;
    if (!actor.session.empty()) row.claudeSession = Text(actor.session);
    return row;
}

double wobble(double minutes, double phase) {
    return (std::sin(minutes / 17 + 2 * phase) + 0.6 * std::sin(minutes / 5.3 + phase) +
            0.3 * std::sin(minutes / 1.7 + 3 * phase)) /
           1.9;
}

std::vector<HistoryPoint> past(const ProcRow& row, Date now) {
    std::vector<HistoryPoint> points;
    for (int minute = 359; minute >= 0; --minute) {
        const double share = (1 - minute / 900.0) * (1 + 0.01 * wobble(minute, row.sample.pid % 97));
        points.push_back(
            {.date = before(now, minute),
             .footprint = static_cast<std::uint64_t>(static_cast<double>(row.sample.footprint) * share),
             .compressed = static_cast<std::uint64_t>(static_cast<double>(row.sample.compressed) * std::pow(share, 3)),
             .cpu = std::max(0.0, row.cpuPercent * (1 + 2 * wobble(minute, row.sample.pid % 89)))});
    }
    return points;
}

std::vector<LoadPoint> load(Date now) {
    std::vector<LoadPoint> points;
    for (int minute = 59; minute >= 0; --minute) {
        points.push_back({.date = before(now, minute),
                          .performance = 2.4 + 0.25 * wobble(minute, 1),
                          .efficiency = 1.3 + 0.12 * wobble(minute, 2)});
    }
    return points;
}

SystemMemory memory() {
    const auto megabytes = [](double value) { return static_cast<std::uint64_t>(value * megabyte); };
    return {.total = megabytes(32 * gigabyte),
            .app = megabytes(13.2 * gigabyte),
            .wired = megabytes(3.34 * gigabyte),
            .compressed = megabytes(4.86 * gigabyte),
            .swapUsed = megabytes(2.12 * gigabyte),
            .swapTotal = megabytes(3 * gigabyte),
            .swapIns = 0,
            .pressure = Pressure::normal,
            .compressionRatio = 3.1};
}

}  // namespace

SampleCast SampleCast::at(Date now) {
    SampleCast sample;
    sample.snapshot.date = now;
    sample.snapshot.memory = memory();
    sample.snapshot.cpu = {
        .user = 0.26, .system = 0.065, .cores = 12, .performance = 2.6, .efficiency = 1.3, .efficiencyCores = 4};
    for (const auto& actor : cast) {
        sample.snapshot.rows.push_back(row(actor, now));
        sample.history.emplace(actor.pid, past(sample.snapshot.rows.back(), now));
    }
    sample.loadHistory = load(now);
    return sample;
}

std::vector<ProcRow> SampleCast::crowd(int count, int turn, Date now) {
    std::vector<ProcRow> rows;
    for (int number = 0; number < count; ++number) {
        const auto name = "worker-" + std::to_string(number / 10);
        const double size = 20 + (number * 7919 + turn * 104729) % 4000;
        const Actor actor{1000 + number,
                          name,
                          "",
                          number % 3 == 0 ? "atlas-web" : "",
                          "",
                          size,
                          size / 5,
                          (number + turn) % 40 / 10.0,
                          static_cast<double>(number % 600),
                          3 * hours};
        rows.push_back(row(actor, now));
    }
    return rows;
}

void SampleCast::nameApplications(FakeWorld& world) {
    for (const auto& actor : cast) {
        if (!actor.app.empty()) world.displayNames.insert_or_assign(appPath(actor.app), std::string(actor.app));
    }
}

}  // namespace tolvane::fakes
