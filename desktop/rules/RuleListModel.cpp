#include "desktop/rules/RuleListModel.h"

#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

/// What a screen reader says of a row.
QString spoken(const RuleRow& row) {
    QStringList parts{qtText(row.name), qtText(row.summary), qtText(row.mode)};
    if (row.status) parts.append(qtText(*row.status));
    return parts.join(QStringLiteral(", "));
}

}  // namespace

bool RuleListModel::holdsSameRules(const std::vector<RuleRow>& rows) const {
    return std::ranges::equal(rows, rows_, {}, &RuleRow::id, &RuleRow::id);
}

void RuleListModel::show(std::vector<RuleRow> rows) {
    if (!holdsSameRules(rows)) {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
        return;
    }
    for (std::size_t number = 0; number < rows.size(); ++number) {
        if (rows[number] == rows_[number]) continue;
        rows_[number] = std::move(rows[number]);
        const auto changed = index(static_cast<int>(number));
        emit dataChanged(changed, changed);
    }
}

QModelIndex RuleListModel::find(const UUID& id) const {
    const auto found = std::ranges::find(rows_, id, &RuleRow::id);
    return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()));
}

int RuleListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RuleListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto& shown = row(index.row());
    if (role == Qt::DisplayRole) return qtText(shown.name);
    if (role == Qt::AccessibleTextRole) return spoken(shown);
    return {};
}

}  // namespace tolvane::desktop
