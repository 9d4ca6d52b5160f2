#include "desktop/panel/PanelRows.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int leastRowHeight = 24;
constexpr int rowPadding = 6;

QString spoken(const std::vector<PanelRow>& rows) {
    QStringList parts;
    for (const auto& row : rows) {
        QStringList words{row.title};
        for (const auto& each : {row.tag, row.quietFigure, row.figure}) {
            if (!each.isEmpty()) words << each;
        }
        parts << words.join(QLatin1Char(' '));
    }
    return parts.join(QStringLiteral(", "));
}

}  // namespace

PanelRows::PanelRows(const Look& look, int columnWidth, std::string_view icon, QString quietTip, QWidget* parent)
    : QWidget(parent), look_(look), columnWidth_(columnWidth), icon_(icon), quietTip_(std::move(quietTip)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PanelRows::show(std::vector<PanelRow> rows) {
    if (rows == rows_) return;
    const bool resized = rows.size() != rows_.size();
    rows_ = std::move(rows);
    setAccessibleName(spoken(rows_));
    if (resized) updateGeometry();
    update();
}

bool PanelRows::hasTags() const { return !rows_.empty() && !rows_.front().tag.isEmpty(); }

int PanelRows::rowHeight() const {
    const auto& fonts = look_.fonts();
    const int one = std::max(leastRowHeight, fonts.lineHeight(TextRole::body) + rowPadding);
    return hasTags() ? fonts.lineHeight(TextRole::body) + fonts.lineHeight(TextRole::caption) + rowPadding : one;
}

int PanelRows::columnWidth() const { return look_.fonts().scaled(columnWidth_); }

QSize PanelRows::sizeHint() const { return {0, static_cast<int>(rows_.size()) * rowHeight()}; }

QRect PanelRows::titleRect(const PanelRow& row, QRect rect) const {
    const int icon = look_.fonts().scaled(Sizes::icon);
    const int columns = row.quietFigure.isEmpty() ? 1 : 2;
    return rect.adjusted(icon + Sizes::gap, 0, -columns * columnWidth() - Sizes::gap, 0);
}

QRect PanelRows::quietRect(QRect rect) const {
    return {rect.right() + 1 - 2 * columnWidth() - Sizes::gap, rect.top(), columnWidth(), rect.height()};
}

void PanelRows::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect rect(0, 0, width(), rowHeight());
    for (const auto& row : rows_) {
        paintRow(painter, row, rect);
        rect.translate(0, rect.height());
    }
}

void PanelRows::paintIcon(QPainter& painter, const PanelRow& row, QRect rect) const {
    const int side = look_.fonts().scaled(Sizes::icon);
    QRect icon(rect.left(), rect.center().y() - side / 2 + 1, side, side);
    icon = QStyle::visualRect(layoutDirection(), rect, icon);
    if (row.appPath) {
        look_.appIcons().paint(painter, *row.appPath, row.title, icon);
    } else {
        look_.icons().paint(painter, icon_, look_.tokens().text2, icon);
    }
}

void PanelRows::paintRow(QPainter& painter, const PanelRow& row, QRect rect) const {
    const auto& fonts = look_.fonts();
    const auto& tokens = look_.tokens();
    const auto direction = layoutDirection();
    const auto placed = [&](QRect part) { return QStyle::visualRect(direction, rect, part); };
    const auto leading = mirrored(direction, Qt::AlignLeft);
    paintIcon(painter, row, rect);
    auto title = titleRect(row, rect);
    if (!row.tag.isEmpty()) {
        const int lines = fonts.lineHeight(TextRole::body) + fonts.lineHeight(TextRole::caption);
        const int top = rect.top() + (rect.height() - lines) / 2;
        const QRect tag(title.left(), top + fonts.lineHeight(TextRole::body), title.width(),
                        fonts.lineHeight(TextRole::caption));
        title = QRect(title.left(), top, title.width(), fonts.lineHeight(TextRole::body));
        painter.setFont(fonts.font(TextRole::caption));
        painter.setPen(tokens.text2);
        drawLine(painter, placed(tag), painter.fontMetrics().elidedText(row.tag, Qt::ElideRight, tag.width()), leading);
    }
    painter.setFont(fonts.font(TextRole::body));
    painter.setPen(tokens.text);
    drawLine(painter, placed(title), painter.fontMetrics().elidedText(row.title, Qt::ElideRight, title.width()),
             leading);
    painter.setFont(fonts.figures(TextRole::small));
    const QRect figure(rect.right() + 1 - columnWidth(), rect.top(), columnWidth(), rect.height());
    drawLine(painter, placed(figure), row.figure, Qt::AlignRight);
    painter.setPen(tokens.text2);
    drawLine(painter, placed(quietRect(rect)), row.quietFigure, Qt::AlignRight);
}

QString PanelRows::tipAt(QPoint position) const {
    const auto number = static_cast<std::size_t>(std::max(0, position.y()) / rowHeight());
    if (number >= rows_.size()) return {};
    const auto& row = rows_[number];
    const QRect rect(0, static_cast<int>(number) * rowHeight(), width(), rowHeight());
    const auto placed = [&](QRect part) { return QStyle::visualRect(layoutDirection(), rect, part); };
    if (!row.quietFigure.isEmpty() && placed(quietRect(rect)).contains(position)) return quietTip_;
    const QFontMetrics metrics(look_.fonts().font(TextRole::body));
    return metrics.horizontalAdvance(row.title) > titleRect(row, rect).width() ? row.title : QString();
}

bool PanelRows::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    showTip(help->globalPos(), tipAt(help->pos()), this);
    return true;
}

}  // namespace tolvane::desktop
