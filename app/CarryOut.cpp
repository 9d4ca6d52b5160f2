#include "app/AppModelPrivate.h"

namespace tolvane {

QCoro::Task<> AppModel::Private::carryOut(Decision /*decision*/) { co_return; }

}  // namespace tolvane
