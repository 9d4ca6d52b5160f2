#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "core/rules/PatternSet.h"
#include "core/rules/RuleEngine.h"
#include "tests/core/rules/PlainRuleEngine.h"

namespace tolvane {
namespace {

constexpr Date now{Seconds{800'000'000}};
constexpr std::uint64_t megabyte = 1U << 20U;

/// Draws small worlds full of coincidences: few pids, some repeated, parents in rings, agents inside agents, listed or
/// not.
class Draw {
public:
    explicit Draw(unsigned seed) : random_(seed) {}

    World world() {
        World world;
        const auto count = below(40);
        for (std::size_t index = 0; index < count; ++index) world.rows.push_back(row(static_cast<Pid>(index)));
        if (below(4) == 0) std::shuffle(world.rows.begin(), world.rows.end(), random_);
        for (auto left = below(4); left > 0; --left) world.claudeWorkers.push_back(worker());
        if (below(2) == 0) world.frontmostAppID = bundle();
        world.uid = 1000;
        world.selfPID = pid();
        world.memoryTight = below(2) == 0;
        return world;
    }

    std::vector<Rule> rules() {
        std::vector<Rule> rules(below(12));
        for (auto& rule : rules) rule = this->rule();
        return rules;
    }

    /// Marks some of the due decisions as fired, recently or long ago.
    RuleEngine::FiredDates fired(const std::vector<Decision>& due) {
        RuleEngine::FiredDates dates;
        for (const auto& each : due) {
            if (below(2) != 0) continue;
            const Seconds ages[] = {Seconds{0}, Seconds{599}, Seconds{600}, Seconds{3599}, Seconds{3600}};
            dates[RuleEngine::cooldownKey(each.rule, each.subjectKey)] = now - ages[below(5)];
        }
        return dates;
    }

    std::string word() {
        static const std::vector<std::string> words = {"claude", "Claude", "codex",  "node", "bun",   "python3",
                                                       "vite",   "next",   "server", "zsh",  "aider", "n"};
        return words[below(words.size())];
    }
    std::size_t below(std::size_t limit) { return random_() % limit; }

private:
    Pid pid() { return static_cast<Pid>(below(45)); }
    std::string bundle() { return "org.example." + std::to_string(below(3)); }

    ProcRow row(Pid index) {
        ProcRow row;
        row.sample.pid = below(8) == 0 ? pid() : index;
        row.sample.ppid = below(3) == 0 ? pid() : index / 2;
        row.sample.uid = below(6) == 0 ? 0 : 1000;
        row.sample.name = word();
        row.sample.path = paths()[below(paths().size())] + word();
        std::vector<std::string> args;
        for (auto left = below(5); left > 0; --left) args.push_back((below(3) == 0 ? "-" : "/opt/") + word() + ".js");
        row.sample.args = TextList(args);
        if (below(2) == 0) row.sample.cwd = Text("/home/ada/src/" + word());
        row.sample.startTime = now - Seconds{static_cast<double>(below(100'000)) / 7};
        row.sample.footprint = below(400) * megabyte;
        row.sample.compressed = below(100) * megabyte;
        row.unusedSince = now - Seconds{60.0 * static_cast<double>(below(120))};
        if (below(4) == 0) row.appID = Text(bundle());
        if (below(4) == 0) row.appPath = Text("/Applications/A.app");
        return row;
    }

    static const std::vector<std::string>& paths() {
        static const std::vector<std::string> paths = {"/usr/bin/", "/opt/", "/home/ada/claude/versions/1/", "/bin/"};
        return paths;
    }

    ClaudeWorker worker() {
        ClaudeWorker worker;
        worker.shortID = "w" + std::to_string(below(5));
        if (below(2) == 0) worker.name = word();
        worker.hostPID = pid();
        worker.hasPrompt = below(2) == 0;
        return worker;
    }

    RuleTarget target() {
        switch (below(4)) {
            case 0:
                return AppTarget{bundle(), "App"};
            case 1:
                return EmptyClaudeSessionTarget{};
            case 2:
                return AgentSessionTarget{several([&] { return below(5) == 0 ? " " : " " + word() + "\t"; }),
                                          below(3) == 0};
            default:
                return CommandTarget{several([&] { return below(6) == 0 ? "" : word().substr(0, 1 + below(6)); })};
        }
    }

    template <typename Make>
    std::vector<std::string> several(const Make& make) {
        std::vector<std::string> all;
        for (auto left = below(4); left > 0; --left) all.push_back(make());
        return all;
    }

    Rule rule() {
        Rule rule;
        rule.id = UUID::random();
        rule.enabled = below(6) != 0;
        rule.dryRun = below(2) == 0;
        rule.target = target();
        if (below(3) != 0) rule.unusedMinutes = static_cast<std::int64_t>(below(120));
        if (below(3) != 0) rule.memoryMB = static_cast<std::int64_t>(below(400));
        if (below(4) == 0) rule.onlyWhenTight = below(2) == 0;
        return rule;
    }

    std::mt19937 random_;
};

TEST(RuleEngine, decidesAsStepByStepOnAnyWorld) {
    std::size_t decided = 0;
    std::size_t held = 0;
    for (unsigned seed = 0; seed < 4000; ++seed) {
        Draw draw(seed);
        const auto world = draw.world();
        const auto rules = draw.rules();
        const auto due = plain::decisions(rules, world, now, {});
        ASSERT_EQ(RuleEngine::decisions(rules, world, now, {}), due) << seed;
        const auto fired = draw.fired(due);
        const auto left = plain::decisions(rules, world, now, fired);
        ASSERT_EQ(RuleEngine::decisions(rules, world, now, fired), left) << seed;
        for (const auto& rule : rules) {
            ASSERT_EQ(RuleEngine::candidates(rule, world), plain::candidates(rule, world)) << seed;
        }
        decided += due.size();
        held += due.size() - left.size();
    }
    EXPECT_GT(decided, 2000) << "else little was compared";
    EXPECT_GT(held, 500);
}

TEST(PatternSet, findsWhatAPlainSearchFinds) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        Draw draw(seed);
        PatternSet set;
        std::vector<std::string> patterns;
        std::vector<PatternSet::Number> numbers;
        for (auto left = draw.below(8); left > 0; --left) {
            auto pattern = draw.word();
            if (draw.below(2) == 0) pattern += " " + draw.word();
            patterns.push_back(pattern.substr(draw.below(pattern.size())));
            numbers.push_back(set.add(patterns.back()));
        }
        set.prepare();
        for (int round = 0; round < 20; ++round) {
            std::string text;
            for (auto left = draw.below(6); left > 0; --left) text += draw.word() + (draw.below(2) == 0 ? " " : "");
            set.search(text);
            for (std::size_t index = 0; index < patterns.size(); ++index) {
                EXPECT_EQ(set.isFound(numbers[index]), text.find(patterns[index]) != std::string::npos)
                    << patterns[index] << " in " << text;
            }
        }
    }
}

TEST(PatternSet, givesOnePatternOneNumber) {
    PatternSet set;
    EXPECT_EQ(set.add("vite"), set.add("vite"));
    EXPECT_NE(set.add("vite"), set.add("next"));
}

}  // namespace
}  // namespace tolvane
