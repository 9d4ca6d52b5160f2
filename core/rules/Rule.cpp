#include "core/rules/Rule.h"

#include <limits>

namespace tolvane {

namespace {

constexpr unsigned megabyteShift = 20;

Rule preset(std::string name, RuleTarget target, std::int64_t unusedMinutes, std::optional<std::int64_t> memoryMB,
            RuleAction action) {
    return {.id = UUID::random(),
            .name = std::move(name),
            .target = std::move(target),
            .unusedMinutes = unusedMinutes,
            .memoryMB = memoryMB,
            .action = action};
}

std::vector<Rule> makePresets() {
    return {
        preset("Forgotten Vite and Next dev servers",
               CommandTarget{{"vite/bin/vite.js", "next dev", "next-server", "webpack serve"}}, 120, std::nullopt,
               RuleAction::terminate),
        // The trailing blank excludes programs whose names only begin with "puma".
        preset("Idle Rails servers", CommandTarget{{"puma ", "rails server"}}, 240, std::nullopt,
               RuleAction::terminate),
        preset("Claude sessions that never got a prompt", EmptyClaudeSessionTarget{}, 30, std::nullopt,
               RuleAction::terminate),
        preset("Restart Microsoft Teams when it grows", AppTarget{"com.microsoft.teams2", "Microsoft Teams"}, 60, 1536,
               RuleAction::relaunch),
        preset("Restart Slack when it grows", AppTarget{"com.tinyspeck.slackmacgap", "Slack"}, 60, 1536,
               RuleAction::relaunch),
    };
}

}  // namespace

const std::vector<Rule>& Rule::presets() {
    static const std::vector<Rule> rules = makePresets();
    return rules;
}

std::optional<std::uint64_t> Rule::memoryLimit() const {
    if (!memoryMB || *memoryMB < 0) return std::nullopt;
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    const auto megabytes = static_cast<std::uint64_t>(*memoryMB);
    return megabytes > (most >> megabyteShift) ? most : megabytes << megabyteShift;
}

RuleMode Rule::mode() const {
    if (!enabled) return RuleMode::off;
    return dryRun ? RuleMode::logOnly : RuleMode::on;
}

void Rule::setMode(RuleMode mode) {
    enabled = mode != RuleMode::off;
    dryRun = mode != RuleMode::on;
}

}  // namespace tolvane
