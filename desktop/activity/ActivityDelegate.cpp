#include "desktop/activity/ActivityDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "desktop/activity/ActivityModel.h"
#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int rowHeight = 30;
/// Gap between a number and the text after it.
constexpr int afterFigures = 16;

ActivityColumn columnOf(int number) { return activityColumns[static_cast<std::size_t>(number)].column; }

}  // namespace

ActivityDelegate::ActivityDelegate(const Look& look, QObject* parent)
    : QAbstractItemDelegate(parent),
      look_(look),
      words_(look.fonts().font(TextRole::body)),
      figures_(look.fonts().figures(TextRole::small)) {}

const QFont& ActivityDelegate::font(int column) const {
    const auto shown = columnOf(column);
    return shown == ActivityColumn::time || shown == ActivityColumn::memory ? figures_ : words_;
}

QRect ActivityDelegate::cellText(QRect cell, int column, Qt::LayoutDirection direction) {
    const bool last = column + 1 == static_cast<int>(activityColumns.size());
    const bool follows = column > 0 && activityColumns[static_cast<std::size_t>(column) - 1].trailing;
    const auto text = StyleViews::columnText(cell, column == 0, last, direction);
    if (!follows) return text;
    return direction == Qt::LeftToRight ? text.adjusted(afterFigures, 0, 0, 0) : text.adjusted(0, 0, -afterFigures, 0);
}

void ActivityDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto text = oneLine(index.data(Qt::DisplayRole).toString());
    if (text.isEmpty()) return;
    const auto& tokens = look_.tokens();
    const auto rect = cellText(option.rect, index.column(), option.direction);
    const bool trailing = activityColumns[static_cast<std::size_t>(index.column())].trailing;
    painter->save();
    painter->setFont(font(index.column()));
    painter->setPen(index.data(ActivityModel::dryRunRole).toBool() ? tokens.text2 : tokens.text);
    drawLine(*painter, rect, painter->fontMetrics().elidedText(text, Qt::ElideRight, rect.width()),
             trailing ? Qt::Alignment(Qt::AlignRight) : mirrored(option.direction, Qt::AlignLeft));
    painter->restore();
}

QSize ActivityDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, look_.fonts().height(TextRole::body, rowHeight, 12)};
}

bool ActivityDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) {
    const auto text = index.data(Qt::DisplayRole).toString();
    const auto room = cellText(option.rect, index.column(), option.direction).width();
    if (QFontMetrics(font(index.column())).horizontalAdvance(oneLine(text)) <= room) {
        QToolTip::hideText();
        return false;
    }
    showTip(event->globalPos(), text, view);
    return true;
}

}  // namespace tolvane::desktop
