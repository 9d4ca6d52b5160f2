#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <set>

#include "core/rules/RuleEngine.h"
#include "tests/fakes/RuleScenes.h"

namespace tolvane {
namespace {

using fakes::megabyte;
using fakes::someNow;

// The engine written a second time, plainly and without its indexes, to hold the first one against.

std::string lower(std::string_view text) {
    std::string result;
    for (const char letter : text) result += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return result;
}

std::string lastPart(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    const auto slash = path.rfind('/');
    return path == "/" || slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string shortestStart(Date start) {
    const double seconds = unixSeconds(start);
    for (int digits = 1;; ++digits) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%.*f", digits, seconds);
        if (std::strtod(text.data(), nullptr) == seconds) return text.data();
    }
}

bool mayBeTouched(const ProcRow& row, const World& world) {
    return row.sample.uid == world.uid && row.sample.pid >= 2 && row.sample.pid != world.selfPID;
}

void fold(Decision& decision, const ProcRow& row) {
    decision.unusedSince = decision.pids.empty() ? row.unusedSince : std::max(decision.unusedSince, row.unusedSince);
    decision.pids.push_back(row.sample.pid);
    decision.memory += row.sample.footprint;
    decision.compressed += row.sample.compressed;
}

std::vector<Decision> plainApp(const Rule& rule, const AppTarget& target, const World& world) {
    if (world.frontmostBundleID == target.bundleID) return {};
    Decision one{.rule = rule, .subjectKey = "app:" + target.bundleID, .title = target.name};
    for (const auto& row : world.rows) {
        if (row.bundleID && row.bundleID->view() == target.bundleID && mayBeTouched(row, world)) fold(one, row);
    }
    return one.pids.empty() ? std::vector<Decision>{} : std::vector{one};
}

std::string searchText(const ProcSample& sample) {
    if (sample.args.empty()) return lower(sample.path.view());
    std::string text;
    for (std::size_t index = 0; index < sample.args.size(); ++index) {
        text += (index == 0 ? "" : " ") + std::string(sample.args[index]);
    }
    return lower(text);
}

bool holdsAny(const std::string& text, const std::vector<std::string>& patterns) {
    return std::ranges::any_of(patterns, [&](const std::string& pattern) {
        return !pattern.empty() && text.find(lower(pattern)) != std::string::npos;
    });
}

std::vector<Decision> plainCommand(const Rule& rule, const CommandTarget& target, const World& world) {
    std::vector<Decision> found;
    for (const auto& row : world.rows) {
        const std::string path(row.sample.path.view());
        bool isSystem = false;
        for (const char* folder : {"/System/", "/usr/", "/bin/", "/sbin/", "/Library/Apple/"}) {
            isSystem = isSystem || path.starts_with(folder);
        }
        const bool inFront =
            row.bundleID && world.frontmostBundleID && row.bundleID->view() == *world.frontmostBundleID;
        if (!mayBeTouched(row, world) || isSystem || inFront) continue;
        if (!holdsAny(searchText(row.sample), target.patterns)) continue;
        Decision one{.rule = rule,
                     .subjectKey = "pid:" + std::to_string(row.sample.pid) + ":" + shortestStart(row.sample.startTime),
                     .title = row.sample.name.str()};
        fold(one, row);
        found.push_back(one);
    }
    return found;
}

std::set<std::string> plainIdentities(const ProcSample& sample) {
    const auto name = lower(sample.name.view());
    std::set<std::string> names{name};
    if (sample.path.str().find("/claude/versions/") != std::string::npos) names.insert("claude");
    if (!sample.args.empty()) names.insert(lower(lastPart(std::string(sample.args[0]))));
    const bool runsScripts = name == "node" || name == "bun" || name == "deno" || name.starts_with("python");
    if (!runsScripts || sample.args.size() < 2) return names;
    for (std::size_t index = 1; index < sample.args.size(); ++index) {
        const std::string argument(sample.args[index]);
        if (argument.starts_with("-")) continue;
        auto script = lastPart(argument);
        const auto dot = script.rfind('.');
        if (dot != std::string::npos && dot > 0) script.resize(dot);
        names.insert(lower(script));
        break;
    }
    return names;
}

struct PlainSessions {
    const Rule& rule;
    const World& world;
    std::map<Pid, const ProcRow*> byPid;
    std::map<Pid, const ClaudeWorker*> workers;
    std::map<Pid, std::string> matched;
    std::set<Pid> hostParents;

    PlainSessions(const Rule& asked, const World& seen) : rule(asked), world(seen) {
        for (const auto& row : world.rows) byPid.emplace(row.sample.pid, &row);
        for (const auto& worker : world.claudeWorkers) workers[worker.hostPID] = &worker;
        for (const auto& [pid, worker] : workers) {
            if (byPid.contains(pid)) hostParents.insert(byPid.at(pid)->sample.ppid);
        }
    }

    void match(const std::vector<std::string>& names) {
        std::vector<std::string> wanted;
        for (const auto& name : names) {
            const auto begin = name.find_first_not_of(' ');
            if (begin == std::string::npos) continue;
            wanted.push_back(lower(name.substr(begin, name.find_last_not_of(' ') + 1 - begin)));
        }
        for (const auto& row : world.rows) {
            if (row.appBundlePath && !workers.contains(row.sample.pid)) continue;
            const auto identities = plainIdentities(row.sample);
            const auto first =
                std::ranges::find_if(wanted, [&](const auto& name) { return identities.contains(name); });
            if (first != wanted.end()) matched[row.sample.pid] = *first;
        }
    }

    bool isInside(Pid pid) const {
        std::set<Pid> visited{pid};
        Pid above = byPid.at(pid)->sample.ppid;
        while (above >= 2 && byPid.contains(above) && visited.insert(above).second) {
            if (matched.contains(above)) return true;
            above = byPid.at(above)->sample.ppid;
        }
        return false;
    }

    std::vector<Decision> find(const AgentSessionTarget& target) {
        match(target.names);
        std::set<Pid> roots;
        for (const auto& [pid, label] : matched) {
            const bool isRoot = workers.contains(pid) || (!hostParents.contains(pid) && !isInside(pid));
            const bool lacksPrompt = workers.contains(pid) && !workers.at(pid)->hasPrompt;
            if (isRoot && (!target.onlyWithoutPrompt || lacksPrompt)) roots.insert(pid);
        }
        auto boundary = roots;
        boundary.insert(hostParents.begin(), hostParents.end());
        std::vector<Decision> found;
        for (const Pid root : roots) {
            if (mayBeTouched(*byPid.at(root), world)) found.push_back(session(root, boundary));
        }
        return found;
    }

    Decision session(Pid root, const std::set<Pid>& boundary) const {
        std::vector<const ProcRow*> members{byPid.at(root)};
        for (std::size_t next = 0; next < members.size(); ++next) {
            for (const auto& row : world.rows) {
                const bool isChild = row.sample.ppid == members[next]->sample.pid;
                if (isChild && !boundary.contains(row.sample.pid)) members.push_back(&row);
            }
        }
        Decision one{.rule = rule};
        const auto& first = byPid.at(root)->sample;
        if (workers.contains(root)) {
            const auto& worker = *workers.at(root);
            one.title = "Claude session " + worker.name.value_or(worker.shortID);
            one.subjectKey = "claude:" + worker.shortID;
        } else {
            one.title = matched.at(root) + (first.cwd ? " in " + lastPart(first.cwd->str()) : "");
            one.subjectKey = "agent:" + std::to_string(root) + ":" + shortestStart(first.startTime);
        }
        for (const auto* row : members) {
            if (mayBeTouched(*row, world)) fold(one, *row);
        }
        return one;
    }
};

std::vector<Decision> plainCandidates(const Rule& rule, const World& world) {
    if (const auto* app = std::get_if<AppTarget>(&rule.target)) return plainApp(rule, *app, world);
    if (const auto* command = std::get_if<CommandTarget>(&rule.target)) return plainCommand(rule, *command, world);
    const auto* agents = std::get_if<AgentSessionTarget>(&rule.target);
    return PlainSessions(rule, world).find(agents ? *agents : AgentSessionTarget{{"claude"}, true});
}

bool meetsConditions(const Decision& decision, Date now, const RuleEngine::FiredDates& lastFired) {
    const auto& rule = decision.rule;
    if (rule.unusedMinutes && (now - decision.unusedSince).count() < static_cast<double>(*rule.unusedMinutes) * 60.0) {
        return false;
    }
    if (rule.memoryMB && decision.memory < static_cast<std::uint64_t>(*rule.memoryMB) * megabyte) return false;
    const auto fired = lastFired.find(rule.id.text() + "|" + decision.subjectKey);
    return fired == lastFired.end() || (now - fired->second).count() >= (rule.dryRun ? 3600 : 600);
}

std::vector<Decision> plainDecisions(const std::vector<Rule>& rules, const World& world, Date now,
                                     const RuleEngine::FiredDates& lastFired) {
    std::vector<Decision> due;
    for (const auto& rule : rules) {
        if (!rule.enabled || (!rule.unusedMinutes && !rule.memoryMB)) continue;
        if (rule.onlyWhenTight == true && !world.memoryTight) continue;
        for (const auto& one : plainCandidates(rule, world)) {
            if (meetsConditions(one, now, lastFired)) due.push_back(one);
        }
    }
    return due;
}

/// Worlds and rules out of few names and sizes, so that they meet often and at their limits.
class Arbitrary {
public:
    explicit Arbitrary(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t limit) { return random_() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }
    template <typename Value, std::size_t count>
    Value of(const std::array<Value, count>& values) {
        return values[below(count)];
    }

    World world() {
        World world{.selfPID = pid(), .uid = fakes::someUser, .memoryTight = once(2)};
        if (once(2)) world.frontmostBundleID = of(bundles);
        std::vector<Pid> pids;
        for (Pid each = 0; each < 24; ++each) {
            if (!once(4)) pids.push_back(each);
        }
        std::ranges::shuffle(pids, random_);
        for (const Pid each : pids) world.rows.push_back(row(each));
        for (std::size_t count = below(4); count > 0; --count) world.claudeWorkers.push_back(worker());
        return world;
    }

    Rule rule() {
        Rule rule{.id = UUID::random(), .name = "rule", .enabled = !once(6), .dryRun = once(2), .target = target()};
        if (!once(3)) rule.unusedMinutes = static_cast<std::int64_t>(below(4) * 30);
        if (!once(3)) rule.memoryMB = static_cast<std::int64_t>(below(5) * 100);
        if (once(3)) rule.onlyWhenTight = once(2);
        return rule;
    }

    RuleEngine::FiredDates firedDates(const std::vector<Rule>& rules, const World& world) {
        static constexpr std::array<double, 6> ages = {-60, 0, 599.5, 600, 3599, 3600};
        RuleEngine::FiredDates dates;
        for (const auto& rule : rules) {
            for (const auto& one : plainCandidates(rule, world)) {
                if (once(2)) dates[rule.id.text() + "|" + one.subjectKey] = someNow - Seconds{of(ages)};
            }
        }
        return dates;
    }

private:
    static constexpr std::array<std::string_view, 10> names = {"claude", "Claude", "node", "python3", "Codex",
                                                               "zsh",    "vite",   "deno", "ruby",    ""};
    static constexpr std::array<std::string_view, 8> folders = {
        "/opt/",           "/usr/bin/",     "/home/ada/.local/share/claude/versions/",
        "/System/x/",      "/bin/",         "/usrlocal",
        "/Library/Apple/", "/Applications/"};
    static constexpr std::array<std::string_view, 9> words = {
        "node", "/opt/Codex.js", "-m", "--flag", "aider", "/x/vite/bin/vite.js", "PUMA 6", "/a/claude/", ".goose"};
    static constexpr std::array<std::string_view, 9> patterns = {"vite", "VITE",  "",     "puma ", " ",
                                                                 "node", "codex", "/opt", "zsh"};
    static constexpr std::array<std::string_view, 9> agents = {"claude", " CLAUDE ", "codex", "node",  "aider",
                                                               "",       "  ",       "vite",  ".goose"};
    static constexpr std::array<const char*, 3> bundles = {"com.example.a", "com.example.b", "com.example.c"};
    static constexpr std::array<std::string_view, 4> cwds = {"/home/ada/src/shop", "/", "/home/ada/", "x"};

    Pid pid() { return static_cast<Pid>(below(24)); }

    ProcRow row(Pid pid) {
        ProcRow row;
        auto& sample = row.sample;
        sample.pid = pid;
        sample.ppid = this->pid();
        sample.uid = once(6) ? 0 : fakes::someUser;
        sample.name = of(names);
        sample.path = std::string(of(folders)) + sample.name.str();
        if (!once(3)) sample.args = args();
        if (once(2)) sample.cwd = Text(of(cwds));
        sample.startTime = someNow - Seconds{static_cast<double>(below(1'000'000)) / 64 + (once(2) ? 0.1 : 0)};
        sample.footprint = (1 + below(4)) * 100 * megabyte - (once(3) ? 1 : 0);
        sample.compressed = below(3) * megabyte;
        row.unusedSince = someNow - Seconds{static_cast<double>(below(5)) * 1800 - (once(4) ? 0.25 : 0)};
        if (once(3)) row.bundleID = Text(of(bundles));
        if (row.bundleID ? !once(4) : once(8)) row.appBundlePath = "/Applications/X.app";
        return row;
    }

    TextList args() {
        std::vector<std::string> all(1 + below(3));
        for (auto& one : all) one = of(words);
        return TextList(all);
    }

    ClaudeWorker worker() {
        ClaudeWorker worker{.shortID = "w" + std::to_string(below(9)), .hostPID = pid(), .hasPrompt = once(2)};
        if (once(2)) worker.name = "fix the cart";
        return worker;
    }

    RuleTarget target() {
        std::vector<std::string> texts(below(4));
        switch (below(4)) {
            case 0:
                return AppTarget{of(bundles), "App"};
            case 1:
                for (auto& text : texts) text = of(patterns);
                return CommandTarget{texts};
            case 2:
                return EmptyClaudeSessionTarget{};
            default:
                for (auto& text : texts) text = of(agents);
                return AgentSessionTarget{texts, once(3)};
        }
    }

    std::mt19937 random_;
};

TEST(RuleEngineModel, agreesWithThePlainEngineOnArbitraryWorlds) {
    std::size_t decided = 0;
    std::size_t held = 0;
    for (unsigned seed = 0; seed < 1500; ++seed) {
        Arbitrary arbitrary(seed);
        const auto world = arbitrary.world();
        std::vector<Rule> rules(1 + arbitrary.below(6));
        for (auto& rule : rules) rule = arbitrary.rule();
        for (const auto& rule : rules) {
            ASSERT_EQ(RuleEngine::candidates(rule, world), plainCandidates(rule, world)) << "seed " << seed;
        }
        const auto lastFired = arbitrary.firedDates(rules, world);
        const auto due = plainDecisions(rules, world, someNow, lastFired);
        ASSERT_EQ(RuleEngine::decisions(rules, world, someNow, lastFired), due) << "seed " << seed;
        decided += due.size();
        held += plainDecisions(rules, world, someNow, {}).size() - due.size();
    }
    EXPECT_GT(decided, 500U);
    EXPECT_GT(held, 200U);
}

TEST(RuleEngineModel, agreesOnWhoCountsAsAnAgent) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        Arbitrary arbitrary(seed);
        for (const auto& row : arbitrary.world().rows) {
            ASSERT_EQ(RuleEngine::agentIdentities(row.sample), plainIdentities(row.sample)) << "seed " << seed;
        }
    }
}

}  // namespace
}  // namespace tolvane
