#include <QCoroTask>

#include "app/AppModelPrivate.h"

namespace tolvane {

QCoro::Task<> AppModel::refreshProjects() { co_return; }

}  // namespace tolvane
