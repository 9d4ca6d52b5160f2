#include "app/screens/rules/RuleEditor.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

#include "app/rows/Format.h"
#include "app/screens/rules/PatternList.h"
#include "app/screens/rules/RulesView.h"
#include "app/screens/rules/RunningApps.h"

namespace tolvane {

namespace {

constexpr std::string_view needsCondition = "Pick at least one condition. Without one the rule never acts.";
constexpr std::string_view tightFooter =
    " Memory is tight while macOS reports memory pressure, or after swap grew by 512 MB in 15 minutes.";

std::string_view footerOf(TargetKind kind) {
    switch (kind) {
        case TargetKind::app:
            return "An app counts as unused from the moment it stops being the frontmost app.";
        case TargetKind::command:
            return "A process counts as unused while its CPU stays under 1%. Tolvane starts counting when it starts "
                   "watching.";
        case TargetKind::agent:
            return "A session counts as unused while every one of its processes stays under 1% CPU. Tolvane starts "
                   "counting when it starts watching.";
    }
    return {};
}

std::vector<std::string> defaultAgents() { return {Rule::defaultAgentNames.begin(), Rule::defaultAgentNames.end()}; }

RuleTarget emptyTarget(TargetKind kind) {
    if (kind == TargetKind::app) return AppTarget{};
    if (kind == TargetKind::command) return CommandTarget{};
    return AgentSessionTarget{.names = defaultAgents()};
}

/// Every agent target as a session target.
AgentSessionTarget sessionsOf(const RuleTarget& target) {
    if (const auto* sessions = std::get_if<AgentSessionTarget>(&target)) return *sessions;
    return {.names = {"claude"}, .onlyWithoutPrompt = true};
}

/// The patterns of a command target, or the names of a session target.
std::vector<std::string> patternsOf(const RuleTarget& target) {
    if (const auto* command = std::get_if<CommandTarget>(&target)) return command->patterns;
    if (kindOf(target) == TargetKind::agent) return sessionsOf(target).names;
    return {};
}

}  // namespace

RuleEditor::RuleEditor(AppModel& model, UUID rule, std::string locale)
    : model_(model), id_(rule), locale_(std::move(locale)) {
    showPatterns();
}

const Rule* RuleEditor::rule() const { return RulesView::find(*model_.rules, id_); }

TargetKind RuleEditor::kind() const { return rule() ? kindOf(rule()->target) : TargetKind::app; }

void RuleEditor::showPatterns() { patterns_ = rule() ? PatternList::join(patternsOf(rule()->target)) : std::string(); }

template <typename Function>
void RuleEditor::change(Function change) {
    if (!rule()) return;
    auto edited = *rule();
    change(edited);
    model_.replaceRule(std::move(edited));
}

void RuleEditor::setName(std::string name) {
    change([&](Rule& rule) { rule.name = std::move(name); });
}

void RuleEditor::setMode(RuleMode mode) {
    change([mode](Rule& rule) { rule.setMode(mode); });
    if (mode != RuleMode::off) model_.requestNotificationPermission();
}

void RuleEditor::setKind(TargetKind kind) {
    if (!rule() || kind == this->kind()) return;
    change([kind](Rule& rule) {
        rule.target = emptyTarget(kind);
        if (!allows(kind, rule.action)) rule.action = RuleAction::notify;
    });
    showPatterns();
}

void RuleEditor::setApp(std::string_view appID) {
    for (const auto& app : runningApps(model_.snapshot->rows, model_.rowNames())) {
        if (app.id == appID) change([&](Rule& rule) { rule.target = AppTarget{app.id, app.name}; });
    }
}

void RuleEditor::setOnlyWithoutPrompt(bool only) {
    if (kind() != TargetKind::agent) return;
    change([only](Rule& rule) {
        auto sessions = sessionsOf(rule.target);
        sessions.onlyWithoutPrompt = only;
        rule.target = std::move(sessions);
    });
}

void RuleEditor::setUnusedMinutes(std::optional<std::int64_t> minutes) {
    change([minutes](Rule& rule) { rule.unusedMinutes = minutes; });
}

void RuleEditor::setMemoryMB(std::optional<std::int64_t> limit) {
    change([limit](Rule& rule) { rule.memoryMB = limit; });
}

void RuleEditor::setOnlyWhenTight(bool only) {
    change([only](Rule& rule) { rule.onlyWhenTight = only ? std::optional(true) : std::nullopt; });
}

void RuleEditor::setAction(RuleAction action) {
    if (!allows(kind(), action)) return;
    change([action](Rule& rule) { rule.action = action; });
}

void RuleEditor::deleteIt() { model_.deleteRules({id_}); }

/// Does not rewrite untouched patterns: the field cannot show a trailing blank that a pattern from a file may have.
void RuleEditor::savePatterns() {
    if (!rule() || kind() == TargetKind::app) return;
    if (patterns_ == PatternList::join(patternsOf(rule()->target))) return;
    change([patterns = PatternList::split(patterns_)](Rule& rule) {
        if (kindOf(rule.target) == TargetKind::command) {
            rule.target = CommandTarget{patterns};
        } else {
            rule.target = AgentSessionTarget{patterns, sessionsOf(rule.target).onlyWithoutPrompt};
        }
    });
    showPatterns();
}

std::vector<RuleEditor::AppChoice> RuleEditor::appChoices() const {
    const auto* target = rule() ? std::get_if<AppTarget>(&rule()->target) : nullptr;
    std::vector<AppChoice> all;
    if (!target) return all;
    if (target->appID.empty()) all.push_back({.title = std::string(chooseApp)});
    for (const auto& app : runningApps(model_.snapshot->rows, model_.rowNames())) {
        const auto size = app.memory > 0 ? ", " + Format::bytes(app.memory, locale_) : std::string();
        all.push_back({.appID = app.id, .title = app.name + size});
    }
    const bool listed = std::ranges::find(all, target->appID, &AppChoice::appID) != all.end();
    if (!listed) all.push_back({.appID = target->appID, .title = target->name});
    return all;
}

std::vector<RuleConditions::Choice> RuleEditor::unusedChoices() const {
    return RuleConditions::unusedChoices(rule() ? rule()->unusedMinutes : std::nullopt, locale_);
}

std::vector<RuleConditions::Choice> RuleEditor::memoryChoices() const {
    return RuleConditions::memoryChoices(rule() ? rule()->memoryMB : std::nullopt, locale_);
}

std::string RuleEditor::footer() const {
    if (!rule()) return {};
    std::string text(rule()->hasCondition() ? footerOf(kind()) : needsCondition);
    if (rule()->onlyWhenTight.value_or(false)) text += tightFooter;
    return text;
}

bool RuleEditor::onlyWithoutPrompt() const {
    return rule() && kind() == TargetKind::agent && sessionsOf(rule()->target).onlyWithoutPrompt;
}

bool RuleEditor::offersWithoutPrompt(const AppModel& model) {
    std::error_code ignored;
    return std::filesystem::is_directory(model.home() + "/.claude/daemon", ignored);
}

}  // namespace tolvane
