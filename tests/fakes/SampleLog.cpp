#include "tests/fakes/SampleLog.h"

#include <array>
#include <optional>

namespace tolvane::fakes {

namespace {

constexpr double MiB = 1'048'576;
constexpr double hour = 3600;

std::uint64_t bytes(double megabytes) { return static_cast<std::uint64_t>(megabytes * MiB); }

struct Sample {
    double hoursAgo;
    const char* outcome;
    const char* subject;
    double megabytes;
    const char* rule;
    /// Megabytes; nullopt for outcomes that free nothing.
    std::optional<double> freed;
};

constexpr auto vite = "Forgotten Vite and Next dev servers";
constexpr auto rails = "Idle Rails servers";
constexpr auto slack = "Restart Slack when it grows";
constexpr auto teams = "Restart Microsoft Teams when it grows";
constexpr auto agents = "Idle AI agent sessions";
constexpr auto unprompted = "Claude sessions that never got a prompt";

const std::array<Sample, 16> samples = {{
    {0.15, "Terminated", "node", 612.4, vite, 612.4},
    {0.7, "Would terminate", "ruby", 371.4, rails, {}},
    {2, "Relaunched", "Slack", 1751, slack, 1204},
    {3.4, "Terminated", "Claude session Checkout flow rewrite", 1208, agents, 1208},
    {3.8, "Would terminate", "ruby", 370.9, rails, {}},
    {5, "Would relaunch", "Microsoft Teams", 1659, teams, {}},
    {19.6, "Terminated", "Claude 4f2a, no prompt yet", 284.6, unprompted, 284.6},
    {20.5, "Terminated", "node", 488.1, vite, 488.1},
    {22.7, "Notified", "Google Chrome", 6185, "Chrome over 6 GB", {}},
    {48.4, "Relaunched", "Slack", 1700, slack, 1806},
    {50.9, "Priority lowered", "esbuild", 96.3, "Quiet builds", {}},
    {53.5, "Would terminate", "ruby", 402.2, rails, {}},
    {65, "Still running", "puma", 366, rails, {}},
    {68.8, "Terminated", "node", 614, vite, 614},
    {95.2, "Terminated", "node", 1434, vite, 1434},
    {124.6, "Relaunched", "Microsoft Teams", 1925, teams, 270},
}};

ActivityEntry entryOf(const Sample& sample, Date now) {
    const auto outcome = Text(sample.outcome);
    ActivityEntry entry{.id = UUID::random(),
                        .date = now - Seconds{sample.hoursAgo * hour},
                        .ruleName = sample.rule,
                        .subject = sample.subject,
                        .outcome = outcome,
                        .memory = bytes(sample.megabytes),
                        .dryRun = outcome.view().starts_with("Would "),
                        .subjectKey = Text(sample.subject)};
    if (sample.freed) {
        entry.freed = bytes(*sample.freed);
        entry.freedCompressed = bytes(*sample.freed / 3);
    }
    return entry;
}

}  // namespace

SampleLog SampleLog::at(Date now) {
    SampleLog log;
    for (const auto* name : {vite, rails, slack, teams, agents}) {
        log.rules.push_back({.id = UUID::random(), .name = name, .enabled = name != slack});
    }
    for (const auto& sample : samples) log.activity.push_back(entryOf(sample, now));
    using Kind = Suggestion::Kind;
    log.suggestions = {
        {.id = "a", .kind = Kind::simulator, .title = "iPhone 17 Pro", .memory = bytes(2365)},
        {.id = "b", .kind = Kind::growing, .title = "storybook in docs-site", .memory = bytes(1884)},
        {.id = "c",
         .kind = Kind::idle,
         .title = "Microsoft Teams",
         .appPath = "/Applications/Microsoft Teams.app",
         .memory = bytes(1659)},
        {.id = "d", .kind = Kind::busy, .title = "esbuild", .memory = bytes(96), .cpu = 180},
        {.id = "e", .kind = Kind::leftRunning, .title = "vite in shop", .memory = bytes(412)},
    };
    return log;
}

std::vector<ActivityEntry> SampleLog::longLog(int count, Date now) {
    std::vector<ActivityEntry> entries;
    entries.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        auto sample = samples[static_cast<std::size_t>(index) % samples.size()];
        sample.hoursAgo = index / 60.0;
        entries.push_back(entryOf(sample, now));
    }
    return entries;
}

}  // namespace tolvane::fakes
