#include <algorithm>
#include <array>
#include <random>

#include "core/advisor/Simulators.h"
#include "core/words/Words.h"
#include "tests/core/advisor/AdviceTest.h"
#include "tests/fakes/RuleScenes.h"

namespace tolvane {
namespace {

using Kind = Suggestion::Kind;
using Rows = std::vector<const ProcRow*>;

constexpr std::uint64_t mebibyte = 1 << 20;

std::string lastPart(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    const auto slash = path.rfind('/');
    return path == "/" || slash == std::string::npos ? path : path.substr(slash + 1);
}

/// A second, plain implementation of the six detectors to compare the real ones with.
class PlainAdvice {
public:
    PlainAdvice(const AdviceScene& scene, const Advisor& advisor) : scene_(scene), advisor_(advisor) {
        for (const auto& row : scene.world.rows) {
            if (isEligible(row)) eligible_.push_back(&row);
        }
        for (const auto* row : eligible_) {
            if (!row->appPath) loose_.push_back(row);
        }
    }

    std::vector<Suggestion> all() {
        simulators();
        leftRunning();
        growing();
        duplicates();
        busy();
        idle();
        for (auto& one : results_) {
            const bool ofMemory = one.kind == Kind::growing || one.kind == Kind::idle;
            if (!ofMemory || !one.id.ends_with("|com.google.Chrome")) continue;
            one.evidence += " Chrome's Memory Saver (Settings > Performance) discards inactive tabs without a restart.";
        }
        std::ranges::stable_sort(results_, [](const auto& a, const auto& b) { return a.memory > b.memory; });
        return results_;
    }

private:
    bool isEligible(const ProcRow& row) const {
        const auto& world = scene_.world;
        const auto& sample = row.sample;
        if (sample.uid != world.uid || sample.pid < 2 || sample.pid == world.selfPID) return false;
        if (sample.isSystem() || row.claudeSession) return false;
        if (row.appID && world.frontmostAppID && row.appID->str() == *world.frontmostAppID) return false;
        if (row.appID || row.appPath) return true;
        const auto names = fakes::agentIdentities(sample);
        return std::ranges::none_of(Rule::defaultAgentNames,
                                    [&](std::string_view agent) { return names.contains(std::string(agent)); });
    }

    // Words

    static std::string key(const ProcRow& row) {
        return (row.project ? row.project->str() : "") + "|" + std::string(row.sample.ruleMatch());
    }
    static std::string label(const ProcRow& row) {
        const std::string program(row.sample.ruleMatch());
        return row.project ? program + " in " + lastPart(row.project->str()) : program;
    }
    static std::string appName(const ProcRow& row) {
        const auto name = lastPart(row.appPath->str());
        return name.substr(0, name.rfind('.'));
    }
    static std::string name(const ProcRow& row) { return row.appPath ? appName(row) : label(row); }
    std::string bytes(std::uint64_t count) const {
        return Words::bytes(count, Words::ByteStyle::sentence, scene_.locale);
    }
    std::string duration(Seconds span) const {
        return Words::duration(std::max(span, Seconds{60}), Words::UnitWidth::abbreviated, scene_.locale);
    }
    std::string portText(const Rows& rows) {
        std::set<int> numbers;
        for (const auto* row : rows) {
            for (const int port : portsOf(*row)) numbers.insert(port);
        }
        std::vector<std::string> texts;
        for (const int number : numbers) texts.push_back(std::to_string(number));
        return (texts.size() == 1 ? "port " : "ports ") + Words::list(texts, scene_.locale);
    }
    static Rule proposed(std::string name, const ProcRow& row, std::optional<std::int64_t> unusedMinutes,
                         std::optional<std::int64_t> memoryMB) {
        Rule rule{.name = std::move(name), .enabled = true, .dryRun = true};
        if (row.appID && row.appPath) {
            rule.target = AppTarget{row.appID->str(), appName(row)};
        } else {
            rule.target = CommandTarget{{std::string(row.sample.ruleMatch())}};
        }
        rule.action = row.appID ? RuleAction::relaunch : RuleAction::terminate;
        rule.unusedMinutes = unusedMinutes;
        rule.memoryMB = memoryMB;
        return rule;
    }

    // Sums

    const std::vector<int>& portsOf(const ProcRow& row) {
        const auto [place, isNew] = ports_.try_emplace(row.id());
        if (isNew) place->second = scene_.ports({row.id()})[row.id()];
        return place->second;
    }
    Seconds idleTime(const Rows& rows) const {
        Date latest = distantPast;
        for (const auto* row : rows) latest = std::max(latest, row->unusedSince);
        return scene_.now - latest;
    }
    static std::uint64_t sum(const Rows& rows, std::uint64_t ProcSample::* figure) {
        std::uint64_t sum = 0;
        for (const auto* row : rows) sum += row->sample.*figure;
        return sum;
    }
    static std::map<std::string, Rows> grouped(const Rows& rows, const std::function<std::string(const ProcRow&)>& by) {
        std::map<std::string, Rows> groups;
        for (const auto* row : rows) groups[by(*row)].push_back(row);
        return groups;
    }
    bool isSeen(const ProcRow& row) const { return seen_.contains(row.id()); }
    Rows unseen(const Rows& rows) const {
        Rows left;
        std::ranges::copy_if(rows, std::back_inserter(left), [&](const auto* row) { return !isSeen(*row); });
        return left;
    }

    void add(Suggestion one, const Rows& rows, std::optional<Pid> alsoClaim = std::nullopt) {
        for (const auto* row : rows) one.pids.push_back(row->id());
        std::ranges::sort(one.pids);
        one.memory = sum(rows, &ProcSample::footprint);
        for (const auto& known : results_) {
            if (known.id == one.id) return;
        }
        for (const Pid pid : one.pids) {
            if (seen_.contains(pid)) return;
        }
        seen_.insert(one.pids.begin(), one.pids.end());
        if (alsoClaim) seen_.insert(*alsoClaim);
        results_.push_back(std::move(one));
    }

    // Detectors

    void simulators() {
        if (scene_.world.frontmostAppID == "com.apple.iphonesimulator") return;
        for (const auto* row : eligible_) {
            if (row->sample.name != "launchd_sim") continue;
            const auto device = Simulators::device(row->sample.args);
            if (!device) continue;
            std::set<Pid> pids{row->id()};
            for (bool isNew = true; isNew;) {
                isNew = false;
                for (const auto& each : scene_.world.rows) {
                    if (pids.contains(each.sample.ppid)) isNew = pids.insert(each.id()).second || isNew;
                }
            }
            Rows members;
            for (const auto& each : scene_.world.rows) {
                if (pids.contains(each.id()) && each.sample.uid == scene_.world.uid) members.push_back(&each);
            }
            if (idleTime(members) < Seconds{3600}) continue;
            add({.id = "simulator|" + *device,
                 .kind = Kind::simulator,
                 .title = scene_.simulatorName(*device).value_or("Simulator"),
                 .evidence = "Its " + std::to_string(members.size()) + " processes have been idle for " +
                             duration(idleTime(members)) + "."},
                members);
        }
    }

    void leftRunning() {
        Rows left;
        for (const auto* row : loose_) {
            if (row->sample.ppid == 1 && !scene_.managed.contains(row->id()) && row->project &&
                scene_.now - row->unusedSince >= Seconds{3600} && !portsOf(*row).empty()) {
                left.push_back(row);
            }
        }
        for (const auto& [text, rows] : grouped(left, key)) {
            const auto& first = *rows.front();
            add({.id = "left|" + text,
                 .kind = Kind::leftRunning,
                 .title = label(first),
                 .evidence = "Its terminal is gone. Listening on " + portText(rows) + ", unused for " +
                             duration(idleTime(rows)) + ".",
                 .rule = proposed("Stop " + label(first) + " when its terminal is gone", first, 60, std::nullopt)},
                rows);
        }
    }

    void growing() {
        auto sorted = eligible_;
        std::ranges::stable_sort(
            sorted, [](const auto* a, const auto* b) { return a->sample.footprint > b->sample.footprint; });
        for (const auto* row : sorted) {
            if (isSeen(*row)) continue;
            const auto track = advisor_.tracks.find(row->id());
            if (track == advisor_.tracks.end() || track->second.start != row->sample.startTime) continue;
            const auto growth = Advisor::growth(track->second.points, track->second.start);
            if (!growth) continue;
            Rows group{row};
            if (row->appID) {
                group.clear();
                std::ranges::copy_if(eligible_, std::back_inserter(group),
                                     [&](const auto* each) { return each->appID == row->appID; });
            }
            const auto wholeMB = static_cast<std::int64_t>(sum(group, &ProcSample::footprint) / mebibyte);
            const auto rate = static_cast<std::uint64_t>(growth->perHour);
            const std::string verb = row->appID ? "Restart " : "Stop ";
            add({.id = "growing|" + (row->appID ? row->appID->str() : key(*row)),
                 .kind = Kind::growing,
                 .title = name(*row),
                 .appPath = pathOf(*row),
                 .evidence = "Grew by " + bytes(growth->total) + " in " + duration(growth->span) + ", about " +
                             bytes(rate) + " an hour.",
                 .action = row->appID ? RuleAction::relaunch : RuleAction::terminate,
                 .rule =
                     proposed(verb + name(*row) + " when it grows", *row, std::nullopt, wholeMB - wholeMB % 512 + 512)},
                group);
        }
    }

    void duplicates() {
        Rows inProjects;
        for (const auto* row : unseen(loose_)) {
            if (row->project) inProjects.push_back(row);
        }
        const auto command = [](const ProcRow& row) {
            return row.project->str() + "|" + row.sample.args.joined(std::string_view("\0", 1));
        };
        for (const auto& [text, rows] : grouped(inProjects, command)) {
            if (rows.size() < 2) continue;
            Rows listening;
            std::set<Pid> parents;
            for (const auto* row : rows) {
                if (portsOf(*row).empty()) continue;
                listening.push_back(row);
                parents.insert(row->sample.ppid);
            }
            if (listening.size() < 2 || parents.size() == 1) continue;
            const ProcRow* newest = listening.front();
            for (const auto* row : listening) {
                if (row->sample.startTime > newest->sample.startTime) newest = row;
            }
            auto others = listening;
            std::erase(others, newest);
            add({.id = "duplicate|" + key(*newest),
                 .kind = Kind::duplicate,
                 .title = label(*newest),
                 .evidence = std::to_string(listening.size()) + " copies are running, on " + portText(listening) +
                             ". The newest one stays."},
                others, newest->id());
        }
    }

    void busy() {
        const auto groups = grouped(unseen(eligible_), [](const ProcRow& row) {
            return row.appID ? "app|" + row.appID->str() : "pid|" + std::to_string(row.id());
        });
        for (const auto& [text, rows] : groups) {
            const auto& first = *rows.front();
            if (first.appID && idleTime(rows) < Seconds{900}) continue;
            std::vector<const Advisor::CPUTrack*> tracks;
            for (const auto* row : rows) {
                const auto track = advisor_.cpuTracks.find(row->id());
                if (track != advisor_.cpuTracks.end() && track->second.start == row->sample.startTime) {
                    tracks.push_back(&track->second);
                }
            }
            const auto use = Advisor::busy(tracks, advisor_.cpuDates);
            if (!use) continue;
            const auto kind = advisor_.hybrid ? std::optional<std::string_view>("performance") : std::nullopt;
            const bool isOrphan = first.sample.ppid == 1 && first.project;
            add({.id = "busy|" + (first.appID ? first.appID->str() : key(first)),
                 .kind = Kind::busy,
                 .title = name(first),
                 .appPath = pathOf(first),
                 .evidence = "Used about " + Words::cores(use->percent, kind, scene_.locale) + " for the last " +
                             duration(use->span) +
                             (first.appID ? " while in the background."
                              : isOrphan  ? ". Its terminal is gone."
                                          : "."),
                 .action = first.appID ? RuleAction::relaunch : RuleAction::terminate,
                 .cpu = use->percent},
                rows);
        }
    }

    void idle() {
        const auto groups =
            grouped(eligible_, [](const ProcRow& row) { return row.appID ? "app|" + row.appID->str() : key(row); });
        const bool tight = scene_.memory.swapUsed > 0 || scene_.memory.pressure != Pressure::normal;
        for (const auto& [text, rows] : groups) {
            const auto& first = *rows.front();
            const auto size = sum(rows, &ProcSample::footprint);
            const auto compressed = sum(rows, &ProcSample::compressed);
            const auto unused = idleTime(rows);
            const bool packed =
                tight && compressed >= 256 * mebibyte && 2 * compressed >= size && unused >= Seconds{1800};
            if (!packed && (size * 64 < scene_.memory.total || unused < Seconds{7200})) continue;
            const std::string verb = first.appID ? "Restart " : "Stop ";
            add({.id = "idle|" + text,
                 .kind = Kind::idle,
                 .title = name(first),
                 .appPath = pathOf(first),
                 .evidence = "Unused for " + duration(unused) +
                             (packed ? ", with " + bytes(compressed) + " of its " + bytes(size) + " compressed."
                                     : ", using " + bytes(size) + "."),
                 .action = first.appID ? RuleAction::relaunch : RuleAction::terminate,
                 .rule = proposed(verb + name(first) + " when idle", first, packed ? 30 : 120, std::nullopt)},
                rows);
        }
    }

    static std::optional<std::string> pathOf(const ProcRow& row) {
        return row.appPath ? std::optional(row.appPath->str()) : std::nullopt;
    }

    const AdviceScene& scene_;
    const Advisor& advisor_;
    Rows eligible_;
    Rows loose_;
    std::vector<Suggestion> results_;
    std::set<Pid> seen_;
    std::map<Pid, std::vector<int>> ports_;
};

/// Machines drawn from few names, sizes and parents, so that findings collide often and sit at their limits.
struct AdviceModel : AdviceTest {
    std::mt19937 random;

    std::size_t below(std::size_t limit) { return random() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }
    template <typename Value, std::size_t count>
    Value of(const std::array<Value, count>& values) {
        return values[below(count)];
    }

    static constexpr std::string_view device = "/CoreSimulator/Devices/6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E/data";
    static constexpr std::array<double, 9> ages = {0, 899, 900, 1799.5, 1800, 3599, 3600, 7200, 90'000};
    static constexpr std::array<std::uint64_t, 8> sizes = {1, 100, 255, 256, 300, 512, 1024, 3072};
    static constexpr std::array<std::string_view, 7> names = {"node",   "ruby",  "launchd_sim", "codex",
                                                              "Chrome", "Notes", "puma"};
    static constexpr std::array<const char*, 3> bundles = {"com.google.Chrome", "com.example.Notes",
                                                           "com.apple.iphonesimulator"};
    static constexpr std::array<std::string_view, 3> projects = {"/home/ada/src/shop", "/home/ada/src/blog/", "/"};

    void addArbitrary(Pid pid) {
        auto& row = add(pid, static_cast<Pid>(below(5)), of(names));
        auto& sample = row.sample;
        if (once(8)) sample.uid = 0;
        if (once(10)) sample.path = "/usr/bin/x";
        if (once(10)) row.claudeSession = "tidy up";
        if (!once(3)) sample.args = arguments(sample.name.view());
        if (!once(3)) row.project = Text(of(projects));
        if (once(3)) row.appID = Text(of(bundles));
        if (row.appID ? !once(4) : once(6)) {
            row.appPath = "/Applications/" + sample.name.str() + ".app";
            row.project = std::nullopt;
        }
        sample.footprint = of(sizes) * MiB - (once(4) ? 1 : 0);
        sample.compressed = once(2) ? of(sizes) * MiB : sample.footprint / 2 + below(2);
        sample.startTime = now - Seconds{20'000.0 + static_cast<double>(below(4))};
        row.unusedSince = now - Seconds{of(ages)};
        if (!once(3)) ports[pid] = {3000 + static_cast<int>(below(3)), 24'678};
        if (once(8)) managed.insert(pid);
        if (once(4)) growTo(row, sample.footprint / 2, 4);
        if (once(3)) workFor(row);
    }
    TextList arguments(std::string_view name) {
        if (name == "launchd_sim") return {"launchd_sim", once(4) ? "/nowhere" : device};
        if (once(3)) return {name, "--flag"};
        return {name, once(2) ? "/x/vite.js" : "/x/rails"};
    }
    void workFor(const ProcRow& row) {
        work(row, static_cast<double>(below(5)) * 0.25, 4);
        if (once(6)) advisor.cpuTracks.at(row.id()).start += Seconds{1};
    }
    void makeMachine(unsigned seed) {
        random.seed(seed);
        world = fakes::worldOf({});
        advisor = {};
        ports.clear();
        managed.clear();
        advisor.hybrid = once(2);
        memory = {.total = once(2) ? 16 * GiB : 64 * GiB + 1};
        if (once(2)) memory.swapUsed = 1;
        if (once(4)) memory.pressure = Pressure::warning;
        if (once(2)) world.frontmostAppID = of(bundles);
        for (Pid pid = 1; pid < 26; ++pid) addArbitrary(pid);
        world.selfPID = static_cast<Pid>(below(26));
    }
    std::vector<Suggestion> plainSuggestions() {
        const AdviceScene scene{.world = world,
                                .memory = memory,
                                .now = now,
                                .ports = [this](const std::vector<Pid>&) { return ports; },
                                .locale = "en_US",
                                .managed = managed,
                                .simulatorName = [](std::string_view) { return std::optional<std::string>(); }};
        return PlainAdvice(scene, advisor).all();
    }
};

void forgetRuleIds(std::vector<Suggestion>& suggestions) {
    for (auto& one : suggestions) {
        if (one.rule) one.rule->id = {};
    }
}

TEST_F(AdviceModel, agreesWithThePlainDetectorsOnArbitraryMachines) {
    std::map<Kind, int> found;
    for (unsigned seed = 0; seed < 1000; ++seed) {
        makeMachine(seed);
        auto made = suggestions();
        forgetRuleIds(made);
        const auto expected = plainSuggestions();
        ASSERT_EQ(made.size(), expected.size()) << "seed " << seed;
        for (std::size_t place = 0; place < made.size(); ++place) {
            ASSERT_EQ(made[place], expected[place])
                << "seed " << seed << ": " << made[place].id << " " << made[place].evidence << " / "
                << expected[place].id << " " << expected[place].evidence;
            ++found[made[place].kind];
        }
        for (const auto& [pid, times] : portsAsked) ASSERT_EQ(times, 1) << "seed " << seed;
        portsAsked.clear();
    }
    for (const auto kind :
         {Kind::simulator, Kind::leftRunning, Kind::growing, Kind::duplicate, Kind::busy, Kind::idle}) {
        EXPECT_GT(found[kind], 50) << static_cast<int>(kind);
    }
}

}  // namespace
}  // namespace tolvane
