#include "desktop/rules/RuleListModel.h"

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

/// A row's text for screen readers.
QString spoken(const RuleRow& row) {
    QStringList parts{qtText(row.name), qtText(row.summary), qtText(row.mode)};
    if (row.status) parts.append(qtText(*row.status));
    return parts.join(QStringLiteral(", "));
}

}  // namespace

QVariant RuleListModel::cell(const RuleRow& row, int role) const {
    if (role == Qt::DisplayRole) return qtText(row.name);
    if (role == Qt::AccessibleTextRole) return spoken(row);
    return {};
}

}  // namespace tolvane::desktop
