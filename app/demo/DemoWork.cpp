#include <array>
#include <string_view>
#include <utility>

#include "app/demo/Demo.h"
#include "core/projects/Docker.h"

namespace tolvane::Demo {

namespace {

constexpr double minutesPerDay = 1440;
constexpr double mebibyte = 1'048'576;

/// An act of a rule, and when it happened.
struct Act {
    double minutesAgo;
    std::size_t rule;
    std::string_view subject, outcome;
    double mb, compressedMB;
    bool dryRun;
    /// MiB; nullopt for an act that freed nothing.
    double freedMB;
};

enum Presets : std::size_t { vite, rails, claude, teams, slack };

constexpr std::array<Act, 26> acts = {{
    {9, vite, "node", "Terminated", 418.2, 96, false, 418.2},
    {34, rails, "ruby", "Would terminate", 371.4, 30.9, true, 0},
    {71, claude, "claude", "Terminated", 286.1, 44, false, 286.1},
    {158, slack, "Slack", "Relaunched", 1740, 912, false, 1180},
    {204, vite, "node", "Terminated", 612.8, 240, false, 612.8},
    {410, vite, "node", "Still running", 214, 12, false, 0},
    {1 * minutesPerDay + 35, claude, "claude", "Terminated", 311, 96, false, 311},
    {1 * minutesPerDay + 190, vite, "node", "Terminated", 894, 402, false, 894},
    {1 * minutesPerDay + 240, rails, "ruby", "Would terminate", 402.8, 120, true, 0},
    {2 * minutesPerDay + 61, slack, "Slack", "Relaunched", 1622, 804, false, 1090},
    {2 * minutesPerDay + 92, vite, "node", "Terminated", 388, 102, false, 388},
    {3 * minutesPerDay + 12, vite, "node", "Terminated", 1204, 610, false, 1204},
    {3 * minutesPerDay + 48, rails, "ruby", "Would terminate", 366, 98, true, 0},
    {3 * minutesPerDay + 230, slack, "Slack", "Did not quit, it may have unsaved changes", 1580, 600, false, 0},
    {4 * minutesPerDay + 75, claude, "claude", "Terminated", 264, 70, false, 264},
    {5 * minutesPerDay + 140, slack, "Slack", "Relaunched", 1811, 960, false, 1302},
    {6 * minutesPerDay + 20, vite, "node", "Terminated", 702, 266, false, 702},
    {8 * minutesPerDay + 105, vite, "node", "Terminated", 951, 388, false, 951},
    {9 * minutesPerDay + 55, claude, "claude", "Terminated", 298, 88, false, 298},
    {11 * minutesPerDay + 130, slack, "Slack", "Relaunched", 1702, 812, false, 1148},
    {13 * minutesPerDay + 44, vite, "node", "Terminated", 566, 180, false, 566},
    {16 * minutesPerDay + 28, vite, "node", "Terminated", 840, 355, false, 840},
    {19 * minutesPerDay + 90, rails, "ruby", "Would terminate", 388, 64, true, 0},
    {20 * minutesPerDay + 66, slack, "Slack", "Relaunched", 1655, 790, false, 1021},
    {24 * minutesPerDay + 31, vite, "node", "Terminated", 733, 204, false, 733},
    {27 * minutesPerDay + 118, claude, "claude", "Terminated", 305, 92, false, 305},
}};

/// The same number always gives the same id.
UUID idOf(std::size_t number) {
    UUID id;
    id.bytes = {0x7D, 0x1C, 0x52, 0x90, 0x0B, 0x6E, 0x4A, 0x11, 0x9F, 0x3D, 0x20, 0x84, 0x5E, 0xC3, 0, 0};
    id.bytes[14] = static_cast<std::uint8_t>(number >> 8U);
    id.bytes[15] = static_cast<std::uint8_t>(number & 0xFFU);
    return id;
}

std::uint64_t bytes(double mebibytes) { return static_cast<std::uint64_t>(mebibytes * mebibyte); }

ActivityEntry entry(const Act& act, std::size_t number, Date now) {
    ActivityEntry made{.id = idOf(number),
                       .date = now - Seconds{act.minutesAgo * 60},
                       .ruleName = Text(Rule::presets()[act.rule].name),
                       .subject = Text(act.subject),
                       .outcome = Text(act.outcome),
                       .memory = bytes(act.mb),
                       .dryRun = act.dryRun,
                       .subjectKey = Text("demo:" + std::to_string(number)),
                       .compressed = bytes(act.compressedMB),
                       .freed = std::nullopt,
                       .freedCompressed = std::nullopt};
    if (act.freedMB > 0) {
        made.freed = bytes(act.freedMB);
        made.freedCompressed = bytes(act.compressedMB * act.freedMB / act.mb);
    }
    return made;
}

std::string inQuotes(std::string_view text) {
    std::string out = "\"";
    for (const char each : text) {
        if (each == '"' || each == '\\') out += '\\';
        out += each;
    }
    return out + '"';
}

/// One line as the container client prints it.
std::string containerLine(std::string_view id, std::string_view name, std::string_view folder) {
    return "{\"ID\":" + inQuotes(id) + ",\"Names\":" + inQuotes(name) + ",\"State\":\"running\",\"Labels\":" +
           inQuotes("com.docker.compose.project=billing-api,com.docker.compose.project.working_dir=" +
                    std::string(folder)) +
           "}\n";
}

}  // namespace

/// One rule in each mode, and one that waits until memory is tight.
std::vector<Rule> rules() {
    auto made = Rule::presets();
    made[vite].setMode(RuleMode::on);
    made[rails].setMode(RuleMode::logOnly);
    made[claude].setMode(RuleMode::on);
    made[slack].setMode(RuleMode::on);
    made[slack].onlyWhenTight = true;
    return made;
}

std::vector<ActivityEntry> activity(Date now) {
    std::vector<ActivityEntry> entries;
    for (std::size_t number = 0; number < acts.size(); ++number) entries.push_back(entry(acts[number], number, now));
    return entries;
}

std::vector<ParkedProject> parked(Date now, const Place& place) {
    const auto payments = place.home + "/Developer/payments-worker", tokens = place.home + "/Developer/design-tokens";
    const std::string npm = "/opt/homebrew/bin/npm";
    return {{.root = payments,
             .date = now - Seconds{minutesPerDay * 60},
             .commands = {{.executable = npm,
                           .args = {npm, "run", "worker", "--", "--queue", "payouts", "--concurrency", "4"},
                           .env = {},
                           .cwd = payments}},
             .containers = {"c0ffee52d1a4"}},
            {.root = tokens,
             .date = now - Seconds{3 * minutesPerDay * 60},
             .commands = {{.executable = npm, .args = {npm, "run", "watch"}, .env = {}, .cwd = tokens},
                          {.executable = "/opt/homebrew/bin/node",
                           .args = {"node", "node_modules/.bin/style-dictionary", "build", "--watch"},
                           .env = {},
                           .cwd = tokens}},
             .containers = {}}};
}

std::vector<Container> containers(const Place& place) {
    const auto folders = Roots::in(place);
    return Docker::parse(containerLine("5d0be1f4a7c2", "billing-api-redis-1", folders.billing) +
                         containerLine("91c7a2d03b6e", "billing-api-db-1", folders.billing));
}

std::map<std::string, ProjectBranch> branches(const Place& place) {
    const auto folders = Roots::in(place);
    return {{folders.atlas, {.state = {.branch = "feature/checkout"}, .remoteGone = true}},
            {folders.billing, {.state = {.branch = "main"}}},
            {folders.mobile, {.state = {.branch = "feature/onboarding", .deleted = true}}},
            {folders.docs, {}}};
}

std::map<Pid, std::vector<int>> ports() {
    return {{71302, {5174}}, {69018, {5173}}, {61544, {6006, 6007}}, {71377, {8081}},
            {70221, {3000}}, {70622, {3001}}, {71420, {8080}}};
}

}  // namespace tolvane::Demo
