#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <vector>

#include "app/screens/activity/ActivityView.h"

namespace tolvane::desktop {

/// The activity log as an item model. A row is a place in the log, so a long log costs four bytes an entry; texts are
/// made when a view asks for them. Main thread.
class ActivityModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// Whether the entry is drawn muted.
    static constexpr int dryRunRole = Qt::UserRole + 1;

    /// `view` outlives the model.
    explicit ActivityModel(const ActivityView& view, QObject* parent = nullptr);

    /// Takes the log as it is now. New entries at the top are inserted; any other change resets the model.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const ActivityEntry* entry(std::uint32_t fromEnd) const;
    std::optional<UUID> idAt(std::uint32_t fromEnd) const;
    std::vector<std::uint32_t> rowsNow() const;
    bool growsTo(const std::vector<std::uint32_t>& rows) const;

    const ActivityView& view_;
    /// Counted from the log's end, where the last entry is 1, so that a row means the same entry while the log grows.
    std::vector<std::uint32_t> rows_;
    /// Ids of the first and last entry in `rows_`.
    std::optional<UUID> first_, last_;
};

}  // namespace tolvane::desktop
