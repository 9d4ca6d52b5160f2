#include "desktop/history/HolderRows.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int leastRowHeight = 26;
constexpr int leastWidth = 240;
constexpr int figureGap = 16;

}  // namespace

HolderRows::HolderRows(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void HolderRows::show(const HolderList& list) {
    std::vector<Row> rows;
    rows.reserve(list.rows.size());
    for (const auto& row : list.rows) rows.push_back({oneLine(qtText(row.title)), row.appPath, qtText(row.figure)});
    take(qtText(list.title), std::move(rows), qtText(list.empty), true);
}

void HolderRows::show(const QString& title, const std::vector<RuleActRow>& rows) {
    std::vector<Row> acts;
    acts.reserve(rows.size());
    for (const auto& row : rows) acts.push_back({oneLine(qtText(row.text)), std::nullopt, qtText(row.time)});
    take(title, std::move(acts), {}, false);
}

void HolderRows::take(const QString& title, std::vector<Row> rows, const QString& empty, bool hasIcons) {
    title_ = title;
    rows_ = std::move(rows);
    empty_ = empty;
    hasIcons_ = hasIcons;
    QStringList spoken;
    for (const auto& row : rows_) spoken << row.title + QLatin1Char(' ') + row.figure;
    setAccessibleName(title_);
    setAccessibleDescription(rows_.empty() ? empty_ : spoken.join(QStringLiteral(", ")));
    updateGeometry();
    update();
}

int HolderRows::headHeight() const { return look_.fonts().lineHeight(TextRole::section) + Sizes::step; }

int HolderRows::rowHeight() const { return look_.fonts().height(TextRole::body, leastRowHeight); }

QSize HolderRows::sizeHint() const {
    const int rows = std::max<int>(1, static_cast<int>(rows_.size()));
    return {leastWidth, headHeight() + rows * rowHeight()};
}

void HolderRows::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto left = mirrored(layoutDirection(), Qt::AlignLeft);
    painter.setFont(look_.fonts().font(TextRole::section));
    painter.setPen(look_.tokens().text);
    drawLine(painter, QRect(0, 0, width(), look_.fonts().lineHeight(TextRole::section)), title_, left);
    QRect place(0, headHeight(), width(), rowHeight());
    if (rows_.empty()) {
        painter.setFont(look_.fonts().font(TextRole::body));
        painter.setPen(look_.tokens().text2);
        drawLine(painter, place, painter.fontMetrics().elidedText(empty_, Qt::ElideRight, width()), left);
    }
    for (const auto& row : rows_) {
        paintRow(painter, row, place);
        place.translate(0, place.height());
    }
}

/// Before mirroring.
QRect HolderRows::titleRect(QRect place) const {
    const int indent = hasIcons_ ? iconSize() + Sizes::gap : 0;
    return place.adjusted(indent, 0, -figureWidth() - figureGap, 0);
}

/// Of the column that they stand in.
int HolderRows::figureWidth() const {
    const QFontMetrics figures(look_.fonts().figures(TextRole::body));
    int widest = 0;
    for (const auto& row : rows_) widest = std::max(widest, figures.horizontalAdvance(row.figure));
    return widest;
}

void HolderRows::paintRow(QPainter& painter, const Row& row, QRect place) const {
    const auto& tokens = look_.tokens();
    const auto shown = [&](QRect part) { return QStyle::visualRect(layoutDirection(), place, part); };
    if (hasIcons_) {
        const QRect icon(place.left(), place.top() + (place.height() - iconSize()) / 2, iconSize(), iconSize());
        if (row.appPath) {
            look_.appIcons().paint(painter, *row.appPath, row.title, shown(icon));
        } else {
            look_.icons().paint(painter, "terminal", tokens.text2, shown(icon));
        }
    }
    const auto room = titleRect(place);
    painter.setFont(look_.fonts().font(TextRole::body));
    painter.setPen(tokens.text);
    drawLine(painter, shown(room), painter.fontMetrics().elidedText(row.title, Qt::ElideRight, room.width()),
             mirrored(layoutDirection(), Qt::AlignLeft));
    painter.setFont(look_.fonts().figures(TextRole::body));
    painter.setPen(hasIcons_ ? tokens.text : tokens.text2);
    drawLine(painter, shown(place.adjusted(place.width() - figureWidth(), 0, 0, 0)), row.figure, Qt::AlignRight);
}

bool HolderRows::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int number = help->pos().y() < headHeight() ? -1 : (help->pos().y() - headHeight()) / rowHeight();
    QString tip;
    if (number >= 0 && number < static_cast<int>(rows_.size())) {
        const auto& row = rows_[static_cast<std::size_t>(number)];
        const QFontMetrics metrics(look_.fonts().font(TextRole::body));
        const bool isCut = metrics.horizontalAdvance(row.title) > titleRect(rect()).width();
        if (isCut) tip = row.title;
    }
    showTip(help->globalPos(), tip, this);
    return true;
}

}  // namespace tolvane::desktop
