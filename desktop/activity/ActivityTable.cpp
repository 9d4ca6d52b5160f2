#include "desktop/activity/ActivityTable.h"

#include <QHeaderView>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "desktop/activity/ActivityDelegate.h"
#include "desktop/look/QtText.h"
#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int leastTextWidth = 110;
/// The subject column's share of the width that the other columns leave; the rule column gets the rest.
constexpr double subjectShare = 0.4;
constexpr int widest = 900;

/// Column heads with a little space below them, aligned with the texts of their columns.
class ActivityHeader : public QHeaderView {
public:
    ActivityHeader(const Look& look, QWidget* parent) : QHeaderView(Qt::Horizontal, parent), look_(look) {
        setSectionsMovable(false);
        setSectionsClickable(false);
        setHighlightSections(false);
        setStretchLastSection(true);
        setMinimumSectionSize(1);
    }

    QSize sizeHint() const override { return QHeaderView::sizeHint() + QSize(0, Sizes::step); }

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override {
        const auto head = rect.adjusted(0, 0, 0, -Sizes::step);
        const auto title = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        const bool trailing = activityColumns[static_cast<std::size_t>(section)].trailing;
        painter->save();
        painter->fillRect(rect, palette().base());
        StyleViews::drawHeadGround(*painter, head, look_.tokens());
        painter->setFont(look_.fonts().font(TextRole::caption));
        painter->setPen(look_.tokens().text2);
        drawLine(*painter, ActivityDelegate::cellText(head, section, layoutDirection()), title,
                 trailing ? Qt::Alignment(Qt::AlignRight) : mirrored(layoutDirection(), Qt::AlignLeft));
        painter->restore();
    }

private:
    const Look& look_;
};

int columnOf(ActivityColumn column) { return static_cast<int>(column); }

}  // namespace

ActivityTable::ActivityTable(const Look& look, const ActivityView& view, QWidget* parent)
    : RowTree(look, parent),
      look_(look),
      view_(view),
      model_(new ActivityModel(view, this)),
      header_(new ActivityHeader(look, this)) {
    setObjectName(QStringLiteral("activity"));
    setAccessibleName(qtText(traits(AppSection::activity).title));
    setModel(model_);
    setItemDelegate(new ActivityDelegate(look, this));
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAllColumnsShowFocus(false);
    setMouseTracking(true);
    buildHeader();
}

void ActivityTable::buildHeader() {
    setHeader(header_);
    connect(header_, &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        if (fitting_ || section + 1 == model_->columnCount()) return;
        chosenWidths_[section] = width;
        fitColumns();
        emit columnWidthsChanged();
    });
}

int ActivityTable::usualWidth(int column) const {
    const auto sample = qtText(view_.widestText(activityColumns[static_cast<std::size_t>(column)].column));
    if (sample.isEmpty()) return 0;
    const auto& fonts = look_.fonts();
    const QFontMetrics figures(fonts.figures(TextRole::small)), texts(fonts.font(TextRole::body));
    const bool isText = activityColumns[static_cast<std::size_t>(column)].column == ActivityColumn::whatHappened;
    const int gaps = column == 0 ? Sizes::margin + Sizes::wideGap : Sizes::columnGap + Sizes::gap;
    return (isText ? texts : figures).horizontalAdvance(sample) + gaps;
}

void ActivityTable::fitColumns() {
    const bool was = std::exchange(fitting_, true);
    const int least = look_.fonts().scaled(leastTextWidth);
    const int last = model_->columnCount() - 1;
    const int subject = columnOf(ActivityColumn::subject);
    int room = viewport()->width();
    for (int column = 0; column < last; ++column) {
        if (column == subject) continue;
        const auto chosen = chosenWidths_.find(column);
        const int width = chosen == chosenWidths_.end() ? usualWidth(column) : std::max(chosen->second, least / 2);
        header_->resizeSection(column, width);
        room -= width;
    }
    const auto chosen = chosenWidths_.find(subject);
    const int shared = chosen == chosenWidths_.end() ? static_cast<int>(room * subjectShare) : chosen->second;
    header_->resizeSection(subject, std::max(least, std::min(shared, room - least)));
    fitting_ = was;
}

QString ActivityTable::columnWidths() const {
    QStringList parts;
    for (const auto& [column, width] : chosenWidths_) parts << QStringLiteral("%1=%2").arg(column).arg(width);
    return parts.join(QLatin1Char(';'));
}

void ActivityTable::setColumnWidths(const QString& text) {
    chosenWidths_.clear();
    for (const auto& part : text.split(QLatin1Char(';'))) {
        const auto sides = part.split(QLatin1Char('='));
        bool isColumn = false, isWidth = false;
        const int column = sides.value(0).toInt(&isColumn), width = sides.value(1).toInt(&isWidth);
        if (isColumn && isWidth && column >= 0 && column + 1 < model_->columnCount() && width > 0) {
            chosenWidths_[column] = std::min(width, widest);
        }
    }
    fitColumns();
}

void ActivityTable::drawBranches(QPainter*, const QRect&, const QModelIndex&) const {}

void ActivityTable::resizeEvent(QResizeEvent* event) {
    RowTree::resizeEvent(event);
    fitColumns();
}

}  // namespace tolvane::desktop
