#include <QCoroTask>

#include "app/AppModelPrivate.h"

namespace tolvane {

QCoro::Task<> AppModel::stop(ProjectGroup /*group*/) { co_return; }

QCoro::Task<> AppModel::park(ProjectGroup /*group*/) { co_return; }

QCoro::Task<> AppModel::startAgain(ParkedProject /*project*/) { co_return; }

std::string AppModel::projectLog(const std::string& /*root*/) const { return {}; }

}  // namespace tolvane
