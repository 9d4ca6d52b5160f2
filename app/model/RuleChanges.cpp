#include <algorithm>
#include <utility>

#include "app/model/AppModelPrivate.h"
#include "base/Paths.h"
#include "base/UTF8.h"
#include "core/rules/RuleFile.h"
#include "core/rules/RulesDocument.h"

namespace tolvane {

void AppModel::addRule(Rule rule) {
    const UUID id = rule.id;
    auto all = *rules;
    all.push_back(std::move(rule));
    state_->rules.set(std::move(all));
    state_->selectedRule.set(id);
    state_->section.set(AppSection::rules);
}

void AppModel::replaceRule(Rule rule) {
    auto all = *rules;
    const auto found = std::ranges::find(all, rule.id, &Rule::id);
    if (found == all.end()) return;
    *found = std::move(rule);
    state_->rules.set(std::move(all));
}

void AppModel::deleteRules(const std::set<UUID>& ids) {
    const auto& selected = *selectedRule;
    if (selected && ids.contains(*selected)) state_->selectedRule.set(std::nullopt);
    auto left = *rules;
    std::erase_if(left, [&ids](const Rule& each) { return ids.contains(each.id); });
    state_->rules.set(std::move(left));
}

void AppModel::pauseRules(bool paused) { state_->rulesPaused.set(paused); }

void AppModel::importRules(const std::string& path) {
    const auto name = UTF8::repaired(Paths::lastComponent(path));
    const auto imported = RulesDocument::read(path);
    if (!imported) {
        state_->importMessage.set(RuleFile::notARuleFile(name));
        return;
    }
    const auto before = rules->size();
    state_->rules.set(RuleFile::merge(imported->rules, *rules));
    const auto added = rules->size() - before;
    state_->section.set(AppSection::rules);
    if (added > 0) state_->selectedRule.set(rules->back().id);
    state_->importMessage.set(RuleFile::importMessage(name, added));
}

void AppModel::setBackupToSyncFolder(bool wanted) { state_->backupToSyncFolder.set(wanted); }

std::optional<std::string> AppModel::backupPath() const {
    const auto base = host().folders->syncFolder();
    if (!base) return std::nullopt;
    return *base + "/Tolvane/Rules." + std::string(RuleFile::fileExtension);
}

void AppModel::Private::backUpRules() {
    if (!*model.backupToSyncFolder) return;
    const auto path = model.backupPath();
    if (path) state.backupError.set(RulesDocument{*model.rules}.write(*path));
}

void AppModel::restoreBackup() {
    const auto path = backupPath();
    if (!path) return;
    auto stored = RulesDocument::read(*path);
    if (!stored) {
        state_->backupError.set("Could not restore: " + stored.failure());
        return;
    }
    state_->selectedRule.set(std::nullopt);
    state_->rules.set(std::move(stored->rules));
    state_->backupError.set(std::nullopt);
}

}  // namespace tolvane
