#include "desktop/processes/ProcessTableModel.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <utility>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

constexpr int columns = static_cast<int>(std::tuple_size_v<decltype(processColumns)>);
constexpr int notThere = -1;

const std::vector<TableRow>& childrenOf(const TableRow& line) {
    static const std::vector<TableRow> none;
    return line.children ? *line.children : none;
}

bool isFigure(ProcessColumn column) { return column != ProcessColumn::name; }

}  // namespace

/// One row. `line` points into the list that the model shows.
struct ProcessTableModel::Node {
    const TableRow* line = nullptr;
    Node* parent = nullptr;
    int row = 0;
    Nodes children;

    static std::unique_ptr<Node> make(const TableRow& line, Node* parent) {
        auto node = std::make_unique<Node>();
        node->line = &line;
        node->parent = parent;
        for (const auto& child : childrenOf(line)) node->children.push_back(make(child, node.get()));
        node->number();
        return node;
    }

    void number() {
        int next = 0;
        for (const auto& child : children) child->row = next++;
    }

    template <typename Visitor>
    void visit(const Visitor& visitor) const {
        for (const auto& child : children) {
            visitor(*child);
            child->visit(visitor);
        }
    }
};

/// The new row of each present row. Each new row is claimed by one present row at most, so duplicate ids only cost a
/// redrawn row.
struct ProcessTableModel::Match {
    std::vector<int> newRowOf;
    std::vector<bool> inherited;

    Match(const Nodes& nodes, const std::vector<TableRow>& lines) : inherited(lines.size(), false) {
        std::unordered_map<std::string_view, int> rows;
        rows.reserve(lines.size());
        for (std::size_t row = 0; row < lines.size(); ++row) rows.emplace(lines[row].id, static_cast<int>(row));
        newRowOf.reserve(nodes.size());
        for (const auto& node : nodes) newRowOf.push_back(claim(rows, node->line->id));
    }

private:
    int claim(const std::unordered_map<std::string_view, int>& rows, std::string_view id) {
        const auto found = rows.find(id);
        if (found == rows.end()) return notThere;
        const auto row = static_cast<std::size_t>(found->second);
        if (inherited[row]) return notThere;
        inherited[row] = true;
        return found->second;
    }
};

ProcessTableModel::ProcessTableModel(CellText cellText, QObject* parent)
    : QAbstractItemModel(parent), cellText_(std::move(cellText)), root_(std::make_unique<Node>()) {}

ProcessTableModel::~ProcessTableModel() = default;

/// Keep the previous list until no node points into it: views ask for rows while they handle change signals.
void ProcessTableModel::show(std::vector<TableRow> lines) {
    const auto before = std::exchange(lines_, std::move(lines));
    update(*root_, lines_);
}

void ProcessTableModel::update(Node& parent, const std::vector<TableRow>& lines) {
    Match match(parent.children, lines);
    removeGone(parent, match);
    reorder(parent, match);
    insertNew(parent, lines, match);
    updateChildren(parent, lines);
}

void ProcessTableModel::removeGone(Node& parent, Match& match) {
    auto& rows = match.newRowOf;
    for (auto last = static_cast<int>(rows.size()) - 1; last >= 0; --last) {
        if (rows[static_cast<std::size_t>(last)] != notThere) continue;
        int first = last;
        while (first > 0 && rows[static_cast<std::size_t>(first - 1)] == notThere) --first;
        beginRemoveRows(indexOf(parent), first, last);
        parent.children.erase(parent.children.begin() + first, parent.children.begin() + last + 1);
        rows.erase(rows.begin() + first, rows.begin() + last + 1);
        parent.number();
        endRemoveRows();
        last = first;
    }
}

/// One layout change however many rows moved: with a thousand moves each would update every view's bookkeeping.
void ProcessTableModel::reorder(Node& parent, Match& match) {
    if (std::ranges::is_sorted(match.newRowOf)) return;
    std::vector<std::size_t> order(parent.children.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, {}, [&](std::size_t row) { return match.newRowOf[row]; });

    const QList<QPersistentModelIndex> parents = {QPersistentModelIndex(indexOf(parent))};
    emit layoutAboutToBeChanged(parents, VerticalSortHint);
    Nodes sorted;
    sorted.reserve(order.size());
    for (const auto row : order) sorted.push_back(std::move(parent.children[row]));
    parent.children = std::move(sorted);
    parent.number();
    QModelIndexList from = persistentIndexList(), to;
    to.reserve(from.size());
    for (const auto& index : from) to.push_back(indexOf(*node(index), index.column()));
    changePersistentIndexList(from, to);
    emit layoutChanged(parents, VerticalSortHint);
}

void ProcessTableModel::insertNew(Node& parent, const std::vector<TableRow>& lines, const Match& match) {
    for (std::size_t first = 0; first < lines.size(); ++first) {
        if (match.inherited[first]) continue;
        auto last = first;
        while (last + 1 < lines.size() && !match.inherited[last + 1]) ++last;
        Nodes fresh;
        for (auto row = first; row <= last; ++row) fresh.push_back(Node::make(lines[row], &parent));
        beginInsertRows(indexOf(parent), static_cast<int>(first), static_cast<int>(last));
        parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(first),
                               std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
        parent.number();
        endInsertRows();
        first = last;
    }
}

/// Emit dataChanged for every row: relative times such as "unused for" change each tick.
void ProcessTableModel::updateChildren(Node& parent, const std::vector<TableRow>& lines) {
    for (std::size_t row = 0; row < lines.size(); ++row) {
        auto& child = *parent.children[row];
        const bool present = child.line != &lines[row];
        child.line = &lines[row];
        if (present) update(child, childrenOf(lines[row]));
    }
    if (lines.empty()) return;
    const auto where = indexOf(parent);
    emit dataChanged(index(0, 0, where), index(static_cast<int>(lines.size()) - 1, columns - 1, where));
}

ProcessTableModel::Node* ProcessTableModel::node(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : root_.get();
}

QModelIndex ProcessTableModel::indexOf(const Node& node, int column) const {
    return &node == root_.get() ? QModelIndex() : createIndex(node.row, column, &node);
}

const TableRow* ProcessTableModel::line(const QModelIndex& index) const {
    return index.isValid() ? node(index)->line : nullptr;
}

QModelIndexList ProcessTableModel::find(const std::set<std::string>& ids) const {
    QModelIndexList found;
    root_->visit([&](const Node& each) {
        if (ids.contains(each.line->id)) found.push_back(indexOf(each));
    });
    return found;
}

QModelIndex ProcessTableModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    return createIndex(row, column, node(parent)->children[static_cast<std::size_t>(row)].get());
}

QModelIndex ProcessTableModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(*node(child)->parent) : QModelIndex();
}

int ProcessTableModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(node(parent)->children.size());
}

int ProcessTableModel::columnCount(const QModelIndex&) const { return columns; }

QVariant ProcessTableModel::data(const QModelIndex& index, int role) const {
    const auto* shown = line(index);
    if (!shown) return {};
    const auto column = processColumns[static_cast<std::size_t>(index.column())].column;
    if (role == Qt::TextAlignmentRole && isFigure(column)) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (column == ProcessColumn::name) return nameData(*shown, role);
    return role == Qt::DisplayRole ? QVariant(qtText(cellText_(*shown, column))) : QVariant();
}

QVariant ProcessTableModel::nameData(const TableRow& line, int role) const {
    if (role == Qt::DisplayRole) return qtText(line.title);
    if (role != Qt::AccessibleTextRole) return {};
    return line.detail ? qtText(line.title + ", " + *line.detail) : qtText(line.title);
}

QVariant ProcessTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns) return {};
    const auto& traits = processColumns[static_cast<std::size_t>(section)];
    switch (role) {
        case Qt::DisplayRole:
            return qtText(traits.title);
        case Qt::ToolTipRole:
            return qtText(traits.tooltip);
        case Qt::TextAlignmentRole:
            return QVariant(isFigure(traits.column) ? Qt::AlignRight : Qt::AlignLeft);
        default:
            return {};
    }
}

Qt::ItemFlags ProcessTableModel::flags(const QModelIndex& index) const {
    const auto* shown = line(index);
    if (!shown) return Qt::NoItemFlags;
    const auto usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return shown->children ? usual : usual | Qt::ItemNeverHasChildren;
}

}  // namespace tolvane::desktop
