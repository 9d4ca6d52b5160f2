#pragma once

#include <QAbstractListModel>
#include <vector>

#include "app/screens/rules/RulesView.h"

namespace tolvane::desktop {

/// The rules of the list, in stored order.
class RuleListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Rows whose rules stay in their places keep selection and scroll.
    void show(std::vector<RuleRow> rows);
    const RuleRow& row(int number) const { return rows_[static_cast<std::size_t>(number)]; }
    QModelIndex find(const UUID& id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    bool holdsSameRules(const std::vector<RuleRow>& rows) const;

    std::vector<RuleRow> rows_;
};

}  // namespace tolvane::desktop
