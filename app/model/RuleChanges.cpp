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
    rules.set(std::move(all));
    selectedRule.set(id);
    section.set(AppSection::rules);
}

void AppModel::deleteRules(const std::set<UUID>& ids) {
    const auto& selected = *selectedRule;
    if (selected && ids.contains(*selected)) selectedRule.set(std::nullopt);
    auto left = *rules;
    std::erase_if(left, [&ids](const Rule& each) { return ids.contains(each.id); });
    rules.set(std::move(left));
}

void AppModel::importRules(const std::string& path) {
    const auto name = UTF8::repaired(Paths::lastComponent(path));
    const auto imported = RulesDocument::read(path);
    if (!imported) {
        importMessage.set(RuleFile::notARuleFile(name));
        return;
    }
    const auto before = rules->size();
    rules.set(RuleFile::merge(imported->rules, *rules));
    const auto added = rules->size() - before;
    section.set(AppSection::rules);
    if (added > 0) selectedRule.set(rules->back().id);
    importMessage.set(RuleFile::importMessage(name, added));
}

std::optional<std::string> AppModel::backupPath() const {
    const auto base = host().folders->syncFolder();
    if (!base) return std::nullopt;
    return *base + "/Tolvane/Rules." + std::string(RuleFile::fileExtension);
}

void AppModel::Private::backUpRules() {
    if (!*model.backupToSyncFolder) return;
    const auto path = model.backupPath();
    if (path) model.backupError.set(RulesDocument{*model.rules}.write(*path));
}

void AppModel::restoreBackup() {
    const auto path = backupPath();
    if (!path) return;
    auto stored = RulesDocument::read(*path);
    if (!stored) {
        backupError.set("Could not restore: " + stored.failure());
        return;
    }
    selectedRule.set(std::nullopt);
    rules.set(std::move(stored->rules));
    backupError.set(std::nullopt);
}

}  // namespace tolvane
