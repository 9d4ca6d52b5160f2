#include "desktop/processes/ProcessTable.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/StyleViews.h"

namespace tolvane::desktop {

namespace {

const ProcessColumnTraits& column(int number) { return processColumns[static_cast<std::size_t>(number)]; }

}  // namespace

ProcessTable::ProcessTable(const Look& look, ProcessTableModel::CellText cellText, QWidget* parent)
    : RowTree(look, parent),
      look_(look),
      model_(new ProcessTableModel(std::move(cellText), this)),
      delegate_(new ProcessTableDelegate(look, *model_, this)),
      header_(new ProcessTableHeader(this)) {
    setObjectName(QStringLiteral("processes"));
    setAccessibleName(qtText(traits(AppSection::processes).title));
    setModel(model_);
    setItemDelegate(delegate_);
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    /// We draw the focus ring around the whole row, and only for keyboard users.
    setAllColumnsShowFocus(false);
    setExpandsOnDoubleClick(true);
    setMouseTracking(true);
    setIndentation(Sizes::treeIndent);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    buildHeader();
    connect(model_, &QAbstractItemModel::rowsInserted, this, &ProcessTable::restoreDisclosure);
    connect(this, &RowTree::expanded, this,
            [this](const auto& index) { expandedIds_.insert(model_->line(index)->id); });
    connect(this, &RowTree::collapsed, this,
            [this](const auto& index) { expandedIds_.erase(model_->line(index)->id); });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { selectionByUser(); });
    /// Painting must not change geometry, so a wider column waits for the next turn of the event loop.
    connect(
        delegate_, &ProcessTableDelegate::tooNarrow, this,
        [this](int wide, int width) {
            if (std::exchange(grownWidths_[wide], width) != width) fitColumns();
        },
        Qt::QueuedConnection);
}

void ProcessTable::buildHeader() {
    setHeader(header_);
    header_->setSectionResizeMode(QHeaderView::Fixed);
    header_->setSectionsClickable(true);
    header_->setSortIndicatorShown(true);
    connect(header_, &QHeaderView::sectionClicked, this, [this](int clicked) {
        /// The toolkit has already moved its sort arrow to the clicked column.
        header_->setSortIndicator(sortedColumn_, sortOrder_);
        if (column(clicked).sortsBy) emit headClicked(clicked);
    });
    connect(header_, &ProcessTableHeader::widthDragged, this, [this](int section, int width) {
        chosenWidths_[section] = std::max(width, leastWidth(section));
        fitColumns();
        emit columnWidthsChanged();
    });
    connect(header_, &ProcessTableHeader::widthReset, this, [this](int section) {
        chosenWidths_.erase(section);
        fitColumns();
        emit columnWidthsChanged();
    });
}

void ProcessTable::show(std::vector<TableRow> lines) {
    if (holds_ > 0 || pressed_) {
        waiting_ = std::move(lines);
    } else {
        take(std::move(lines));
    }
}

void ProcessTable::hold(bool held) {
    holds_ = std::max(0, holds_ + (held ? 1 : -1));
    if (holds_ == 0 && !pressed_ && waiting_) take(*std::exchange(waiting_, std::nullopt));
}

void ProcessTable::take(std::vector<TableRow> lines) {
    const int place = verticalScrollBar()->value();
    taking_ = true;
    model_->show(std::move(lines));
    restoreSelection();
    taking_ = false;
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(place);
}

void ProcessTable::restoreDisclosure(const QModelIndex& parent, int first, int last) {
    if (expandedIds_.empty()) return;
    for (int row = first; row <= last; ++row) {
        const auto index = model_->index(row, 0, parent);
        if (!expandedIds_.contains(model_->line(index)->id)) continue;
        expand(index);
        restoreDisclosure(index, 0, model_->rowCount(index) - 1);
    }
}

/// Selects rows by id, so a row that reappears is selected again and a row that took another's place is not.
void ProcessTable::restoreSelection() {
    QItemSelection selection;
    for (const auto& index : model_->find(selectedIds_)) selection.select(index, index);
    const bool was = std::exchange(taking_, true);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    taking_ = was;
}

void ProcessTable::setSelectedIds(std::set<std::string> ids) {
    if (ids == selectedIds_) return;
    selectedIds_ = std::move(ids);
    restoreSelection();
}

void ProcessTable::selectionByUser() {
    if (taking_) return;
    std::set<std::string> ids;
    for (const auto& index : selectionModel()->selectedRows()) ids.insert(model_->line(index)->id);
    if (ids == selectedIds_) return;
    selectedIds_ = std::move(ids);
    emit selectedIdsChanged();
}

void ProcessTable::setSorting(int column, bool ascending) {
    sortedColumn_ = column;
    delegate_->setSortedColumn(column);
    sortOrder_ = ascending ? Qt::AscendingOrder : Qt::DescendingOrder;
    header_->setSortIndicator(column, sortOrder_);
    fitColumns();
    viewport()->update();
}

/// Only the left button counts: the menu that the right button opens swallows the release, and holds the rows itself.
void ProcessTable::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
    RowTree::mousePressEvent(event);
}

void ProcessTable::mouseReleaseEvent(QMouseEvent* event) {
    RowTree::mouseReleaseEvent(event);
    pressed_ = event->buttons().testFlag(Qt::LeftButton);
    if (!pressed_ && holds_ == 0 && waiting_) take(*std::exchange(waiting_, std::nullopt));
}

void ProcessTable::resizeEvent(QResizeEvent* event) {
    RowTree::resizeEvent(event);
    fitColumns();
}

int ProcessTable::leastWidth(int number) const {
    const auto& traits = column(number);
    const auto& fonts = look_.fonts();
    const auto title = qtText(traits.title);
    const int figure = QFontMetrics(fonts.figures(TextRole::small)).horizontalAdvance(qtText(traits.widestSample));
    const int head = number == sortedColumn_ ? StyleViews::sortedHeadWidth(title, fonts)
                                             : QFontMetrics(fonts.font(TextRole::caption)).horizontalAdvance(title);
    const bool last = number + 1 == model_->columnCount();
    const int gaps = Sizes::columnGap + (last ? Sizes::tableTrailing - Sizes::columnGap / 2 : 0);
    const auto grown = grownWidths_.find(number);
    return std::max(std::max(figure, head) + gaps, grown == grownWidths_.end() ? 0 : grown->second);
}

void ProcessTable::fitColumns() {
    int figures = 0;
    for (int number = 1; number < model_->columnCount(); ++number) {
        const auto chosen = chosenWidths_.find(number);
        const int width = std::max(leastWidth(number), chosen == chosenWidths_.end() ? 0 : chosen->second);
        header_->resizeSection(number, width);
        figures += width;
    }
    const int least = look_.fonts().scaled(Sizes::nameLeast);
    const bool scrollsSideways = figures + least > width();
    if (property("clearOfBars").toBool() != scrollsSideways) {
        setProperty("clearOfBars", scrollsSideways);
        updateGeometries();
    }
    header_->resizeSection(0, std::max(least, viewport()->width() - figures));
}

QString ProcessTable::columnWidths() const {
    QStringList parts;
    for (const auto& [number, width] : chosenWidths_) {
        parts << QStringLiteral("%1=%2").arg(qtText(column(number).title)).arg(width);
    }
    return parts.join(QLatin1Char(';'));
}

void ProcessTable::setColumnWidths(const QString& text) {
    chosenWidths_.clear();
    for (const auto& part : text.split(QLatin1Char(';'))) {
        const auto sides = part.split(QLatin1Char('='));
        const int width = sides.value(1).toInt();
        for (int number = 1; number < model_->columnCount(); ++number) {
            if (width > 0 && qtText(column(number).title) == sides.value(0))
                chosenWidths_[number] = std::min(width, 600);
        }
    }
    fitColumns();
}

}  // namespace tolvane::desktop
