#include "bench/MixedRules.h"

#include <string>
#include <utility>

namespace tolvane::bench {

namespace {

RuleTarget targetOf(int number) {
    const auto text = std::to_string(number);
    switch (number % 4) {
        case 0:
            return AppTarget{"org.example.app" + text, "App " + text};
        case 1:
            return AgentSessionTarget{{"claude", "codex", "agent" + text}, false};
        default:
            return CommandTarget{{"vite/bin/vite" + text + ".js", "next dev " + text, "webpack serve"}};
    }
}

}  // namespace

std::vector<Rule> mixedRules(int count, std::int64_t unusedMinutes, std::int64_t memoryMB) {
    std::vector<Rule> rules;
    for (int number = 0; number < count; ++number) {
        Rule rule;
        rule.id = UUID::random();
        rule.name = "rule " + std::to_string(number);
        rule.enabled = true;
        rule.target = targetOf(number);
        rule.unusedMinutes = unusedMinutes;
        rule.memoryMB = memoryMB;
        rules.push_back(std::move(rule));
    }
    return rules;
}

}  // namespace tolvane::bench
