#include "app/AppModelPrivate.h"

namespace tolvane {

void AppModel::addRule(Rule /*rule*/) {}

void AppModel::deleteRules(const std::set<UUID>& /*ids*/) {}

void AppModel::importRules(const std::string& /*path*/) {}

std::optional<std::string> AppModel::iCloudBackupURL() const { return std::nullopt; }

void AppModel::restoreFromICloud() {}

void AppModel::Private::backUpRules() {}

}  // namespace tolvane
