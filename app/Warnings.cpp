#include "app/AppModelPrivate.h"

namespace tolvane {

void AppModel::Private::warnAboutSwap() {}

void AppModel::Private::noticeSuggestions() {}

}  // namespace tolvane
