#include <utility>

#include "app/model/AppModel.h"

namespace tolvane {

void AppModel::show(AppSection wanted) { state_->section.set(wanted); }

void AppModel::openWindow() { state_->windowRequest.set(*windowRequest + 1); }

void AppModel::open(AppSection wanted) {
    show(wanted);
    openWindow();
}

void AppModel::selectRule(std::optional<UUID> id) { state_->selectedRule.set(id); }

void AppModel::selectRows(std::set<std::string> ids) { state_->selectedRows.set(std::move(ids)); }

void AppModel::askImport() { state_->importing.set(true); }

void AppModel::endImport() { state_->importing.set(false); }

void AppModel::askExport(std::vector<Rule> chosen) { state_->exporting.set(std::move(chosen)); }

void AppModel::endExport() { state_->exporting.set(std::nullopt); }

void AppModel::dismissImportMessage() { state_->importMessage.set(std::nullopt); }

}  // namespace tolvane
