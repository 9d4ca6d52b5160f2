#include <QCoroTask>

#include "app/AppModelPrivate.h"

namespace tolvane {

std::vector<Suggestion> AppModel::visibleSuggestions() const { return *suggestions; }

void AppModel::hide(const Suggestion& /*suggestion*/, Date /*until*/) {}

QCoro::Task<> AppModel::act(Suggestion /*suggestion*/, std::optional<RuleAction> /*action*/) { co_return; }

}  // namespace tolvane
