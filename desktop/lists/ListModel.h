#pragma once

#include <QAbstractListModel>
#include <algorithm>
#include <utility>
#include <vector>

namespace tolvane::desktop {

/// A list of values as an item model. While the rows' keys keep their order, views keep selection and scroll position;
/// any other change resets the model. `key` is the member of Row that identifies it.
template <typename Row, auto key>
class ListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void show(std::vector<Row> rows) {
        if (!std::ranges::equal(rows, rows_, {}, key, key)) {
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

    const Row& row(int number) const { return rows_[static_cast<std::size_t>(number)]; }

    /// An invalid index if no row has that key.
    template <typename Key>
    QModelIndex find(const Key& wanted) const {
        const auto found = std::ranges::find(rows_, wanted, key);
        return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()));
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        return index.isValid() ? cell(row(index.row()), role) : QVariant();
    }

protected:
    virtual QVariant cell(const Row& row, int role) const = 0;

private:
    std::vector<Row> rows_;
};

}  // namespace tolvane::desktop
