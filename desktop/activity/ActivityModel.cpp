#include "desktop/activity/ActivityModel.h"

#include <utility>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

const ActivityColumnTraits& column(int number) { return activityColumns[static_cast<std::size_t>(number)]; }

QVariant alignment(int number) {
    return static_cast<int>((column(number).trailing ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

}  // namespace

ActivityModel::ActivityModel(const ActivityView& view, QObject* parent) : QAbstractTableModel(parent), view_(view) {
    refresh();
}

const ActivityEntry* ActivityModel::entry(std::uint32_t fromEnd) const {
    const auto& entries = *view_.model().activity;
    return fromEnd >= 1 && fromEnd <= entries.size() ? &entries[entries.size() - fromEnd] : nullptr;
}

std::optional<UUID> ActivityModel::idAt(std::uint32_t fromEnd) const {
    const auto* found = entry(fromEnd);
    return found ? std::optional(found->id) : std::nullopt;
}

std::vector<std::uint32_t> ActivityModel::rowsNow() const {
    auto rows = view_.rows();
    const auto count = static_cast<std::uint32_t>(view_.model().activity->size());
    for (auto& row : rows) row = count - row;
    return rows;
}

/// The log only grows at its top, so comparing both ends is enough: everything between them is unchanged.
bool ActivityModel::growsTo(const std::vector<std::uint32_t>& rows) const {
    if (rows_.empty() || rows.size() < rows_.size()) return false;
    const auto added = rows.size() - rows_.size();
    return rows[added] == rows_.front() && idAt(rows[added]) == first_ && idAt(rows.back()) == last_;
}

void ActivityModel::refresh() {
    auto rows = rowsNow();
    if (growsTo(rows)) {
        const auto added = static_cast<int>(rows.size() - rows_.size());
        if (added > 0) beginInsertRows({}, 0, added - 1);
        rows_ = std::move(rows);
        if (added > 0) endInsertRows();
    } else {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
    }
    first_ = rows_.empty() ? std::nullopt : idAt(rows_.front());
    last_ = rows_.empty() ? std::nullopt : idAt(rows_.back());
}

int ActivityModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ActivityModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(activityColumns.size());
}

QVariant ActivityModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto* shown = entry(rows_[static_cast<std::size_t>(index.row())]);
    if (!shown) return {};
    if (role == Qt::DisplayRole) return qtText(view_.cell(*shown, column(index.column()).column));
    if (role == Qt::TextAlignmentRole) return alignment(index.column());
    if (role == dryRunRole) return shown->dryRun;
    return {};
}

QVariant ActivityModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole) return qtText(column(section).title);
    if (role == Qt::TextAlignmentRole) return alignment(section);
    return {};
}

}  // namespace tolvane::desktop
