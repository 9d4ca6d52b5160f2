#include "desktop/processes/ProcessTableDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "desktop/look/QtText.h"
#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"
#include "desktop/processes/ProcessTableModel.h"

namespace tolvane::desktop {

namespace {

constexpr int iconGap = 6;
constexpr int detailGap = 7;
/// The tree's own first-level indentation is part of the page's margin.
constexpr int nameLeading = Sizes::margin - Sizes::treeIndent;

constexpr QChar ellipsis(0x2026);

bool isSelected(const QStyleOptionViewItem& option) { return option.state.testFlag(QStyle::State_Selected); }

QRect placed(const QStyleOptionViewItem& option, QRect rect) {
    return QStyle::visualRect(option.direction, option.rect, rect);
}

}  // namespace

RowDetail RowDetail::fitting(const QString& detail, int room, const QFontMetrics& metrics) {
    if (detail.isEmpty()) return {{}, true};
    if (metrics.horizontalAdvance(detail) <= room) return {detail, true};
    const auto slash = detail.lastIndexOf(QLatin1Char('/'));
    if (slash < 0) return {};
    const auto last = ellipsis + detail.mid(slash);
    return metrics.horizontalAdvance(last) <= room ? RowDetail{last, false} : RowDetail{};
}

/// The layout of a name cell, in left-to-right coordinates.
struct ProcessTableDelegate::NameParts {
    QRect icon, titleRect, detailRect;
    QString title;
    RowDetail detail;
    bool isWhole = true;
};

ProcessTableDelegate::ProcessTableDelegate(const Look& look, const ProcessTableModel& model, QObject* parent)
    : QAbstractItemDelegate(parent),
      look_(look),
      model_(model),
      titleFont_(look.fonts().font(TextRole::body)),
      detailFont_(look.fonts().font(TextRole::small)),
      figureFont_(look.fonts().figures(TextRole::small)) {}

QSize ProcessTableDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, look_.fonts().height(TextRole::body, Sizes::tableRowHeight)};
}

ProcessTableDelegate::NameParts ProcessTableDelegate::nameParts(const TableRow& line, QRect cell) const {
    NameParts parts;
    cell.adjust(nameLeading, 0, -Sizes::columnGap / 2, 0);
    if (line.appPath) {
        const int side = look_.fonts().scaled(Sizes::icon);
        parts.icon = QRect(cell.left(), cell.center().y() - side / 2 + 1, side, side);
        cell.setLeft(parts.icon.right() + 1 + iconGap);
    }
    const QFontMetrics titleMetrics(titleFont_);
    const auto title = oneLine(qtText(line.title));
    const int advance = titleMetrics.horizontalAdvance(title);
    parts.isWhole = advance <= cell.width();
    parts.title = parts.isWhole ? title : titleMetrics.elidedText(title, Qt::ElideRight, cell.width());
    parts.titleRect = cell;
    if (!line.detail) return parts;
    parts.detailRect = cell.adjusted(std::min(advance, cell.width()) + detailGap, 0, 0, 0);
    parts.detail =
        RowDetail::fitting(oneLine(qtText(*line.detail)), parts.detailRect.width(), QFontMetrics(detailFont_));
    parts.isWhole = parts.isWhole && parts.detail.isWhole;
    return parts;
}

void ProcessTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    const auto* line = model_.line(index);
    if (!line) return;
    painter->save();
    if (index.column() == 0) {
        paintName(*painter, option, *line);
    } else {
        paintFigure(*painter, option, index);
    }
    painter->restore();
}

void ProcessTableDelegate::paintName(QPainter& painter, const QStyleOptionViewItem& option,
                                     const TableRow& line) const {
    const auto& tokens = look_.tokens();
    const auto parts = nameParts(line, option.rect);
    if (line.appPath) {
        look_.appIcons().paint(painter, *line.appPath, qtText(line.title), placed(option, parts.icon));
    }
    painter.setFont(titleFont_);
    painter.setPen(tokens.text);
    drawLine(painter, placed(option, parts.titleRect), parts.title, mirrored(option.direction, Qt::AlignLeft));
    if (parts.detail.shown.isEmpty()) return;
    painter.setFont(detailFont_);
    painter.setPen(isSelected(option) ? tokens.text2 : tokens.text3);
    drawLine(painter, placed(option, parts.detailRect), parts.detail.shown, mirrored(option.direction, Qt::AlignLeft));
}

void ProcessTableDelegate::paintFigure(QPainter& painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const auto text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty()) return;
    const auto& tokens = look_.tokens();
    const bool last = index.column() + 1 == model_.columnCount();
    const auto rect = StyleViews::columnText(option.rect, false, last, option.direction);
    painter.setFont(figureFont_);
    painter.setPen(isSelected(option) || index.column() == sortedColumn_ ? tokens.text : tokens.text2);
    drawLine(painter, rect, text, Qt::AlignRight);
    const int advance = QFontMetrics(figureFont_).horizontalAdvance(text);
    if (advance > rect.width()) emit tooNarrow(index.column(), option.rect.width() + advance - rect.width());
}

bool ProcessTableDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) {
    const auto* line = model_.line(index);
    QStringList parts;
    if (line && index.column() == 0) {
        if (!nameParts(*line, option.rect).isWhole) {
            parts << qtText(line->title);
            if (line->detail) parts << qtText(*line->detail);
        }
        if (const auto remark = remark_ ? remark_(*line) : std::string(); !remark.empty()) parts << qtText(remark);
    }
    if (parts.isEmpty()) {
        QToolTip::hideText();
        return false;
    }
    showTip(event->globalPos(), parts.join(QLatin1Char('\n')), view);
    return true;
}

}  // namespace tolvane::desktop
