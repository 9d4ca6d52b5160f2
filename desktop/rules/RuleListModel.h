#pragma once

#include "app/screens/rules/RulesView.h"
#include "desktop/lists/ListModel.h"

namespace tolvane::desktop {

/// The rules of the list, in stored order.
class RuleListModel : public ListModel<RuleRow, &RuleRow::id> {
    Q_OBJECT

public:
    using ListModel::ListModel;

protected:
    QVariant cell(const RuleRow& row, int role) const override;
};

}  // namespace tolvane::desktop
