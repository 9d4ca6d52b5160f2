#pragma once

#include <QAbstractItemModel>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/screens/processes/ProcessesView.h"

namespace tolvane::desktop {

/// The processes table as an item model: a tree whose rows keep their identity from one reading to the next. Texts are
/// made when a view asks for them, so only visible rows cost anything. Main thread.
class ProcessTableModel : public QAbstractItemModel {
    Q_OBJECT

public:
    using CellText = std::function<std::string(const TableRow&, ProcessColumn)>;

    explicit ProcessTableModel(CellText cellText, QObject* parent = nullptr);
    ~ProcessTableModel() override;

    /// Turns the present rows into `lines`. Rows with the same id stay, so views keep selection, disclosure and scroll
    /// position.
    void show(std::vector<TableRow> lines);
    const std::vector<TableRow>& lines() const { return lines_; }

    /// Null for the invalid index. Valid until the next `show`.
    const TableRow* line(const QModelIndex& index) const;
    /// The rows with those ids at every level, from top to bottom; ids without a row are skipped.
    QModelIndexList find(const std::set<std::string>& ids) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Node;
    struct Match;
    using Nodes = std::vector<std::unique_ptr<Node>>;

    Node* node(const QModelIndex& index) const;
    QModelIndex indexOf(const Node& node, int column = 0) const;
    void update(Node& parent, const std::vector<TableRow>& lines);
    void removeGone(Node& parent, Match& match);
    void reorder(Node& parent, Match& match);
    void insertNew(Node& parent, const std::vector<TableRow>& lines, const Match& match);
    void updateChildren(Node& parent, const std::vector<TableRow>& lines);
    QVariant nameData(const TableRow& line, int role) const;

    CellText cellText_;
    std::vector<TableRow> lines_;
    std::unique_ptr<Node> root_;
};

}  // namespace tolvane::desktop
