#include "desktop/parts/ValueRows.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "desktop/Words.h"
#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

namespace {

constexpr int markSize = 8;
constexpr int markSpace = 14;
constexpr int labelGap = 12;
constexpr int leastWidth = 140;

QString spoken(const std::vector<ValueRow>& rows) {
    QStringList parts;
    for (const auto& row : rows) {
        auto part = words(row.label) + QLatin1Char(' ') + words(row.value);
        if (!row.remark.empty()) part += QLatin1Char(' ') + words(row.remark);
        parts << part;
    }
    return parts.join(QStringLiteral(", "));
}

QColor markColour(const ValueRow& row, const Tokens& tokens) {
    return row.mark == "efficiency" ? tokens.efficiency : tokens.performance;
}

}  // namespace

ValueRows::ValueRows(const Look& look, int spacing, QWidget* parent) : QWidget(parent), look_(look), spacing_(spacing) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ValueRows::show(std::vector<ValueRow> rows) {
    if (rows == rows_) return;
    const bool resized = rows.size() != rows_.size();
    rows_ = std::move(rows);
    setAccessibleName(spoken(rows_));
    if (resized) updateGeometry();
    update();
}

QSize ValueRows::sizeHint() const {
    const auto count = static_cast<int>(rows_.size());
    const int line = look_.fonts().lineHeight(TextRole::small);
    return {leastWidth, std::max(0, count * line + (count - 1) * spacing_)};
}

QSize ValueRows::minimumSizeHint() const { return sizeHint(); }

QRect ValueRows::rowRect(std::size_t row) const {
    const int line = look_.fonts().lineHeight(TextRole::small);
    return {0, static_cast<int>(row) * (line + spacing_), width(), line};
}

void ValueRows::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (std::size_t row = 0; row < rows_.size(); ++row) paintRow(painter, rows_[row], rowRect(row));
}

int ValueRows::paintMark(QPainter& painter, const ValueRow& row, QRect rect) const {
    if (row.mark.empty()) return 0;
    const QRect mark(rect.left(), rect.center().y() - markSize / 2 + 1, markSize, markSize);
    StyleControls::drawShape(painter, QStyle::visualRect(layoutDirection(), rect, mark), 2,
                             markColour(row, look_.tokens()), {});
    return markSpace;
}

/// The figure keeps its room; a name that is too long for what is left gives way.
void ValueRows::paintRow(QPainter& painter, const ValueRow& row, QRect rect) const {
    const auto& tokens = look_.tokens();
    const auto figures = look_.fonts().figures(TextRole::small);
    const QFontMetrics metrics(figures);
    const int leading = paintMark(painter, row, rect);
    const auto remark = row.remark.empty() ? QString() : QLatin1Char(' ') + words(row.remark);
    const int remarkWidth = metrics.horizontalAdvance(remark);
    const auto value = metrics.elidedText(words(row.value), Qt::ElideMiddle, rect.width() - leading - remarkWidth);
    const int valueWidth = metrics.horizontalAdvance(value);

    const auto draw = [&](QRect part, const QString& text, Qt::Alignment alignment) {
        painter.drawText(QStyle::visualRect(layoutDirection(), rect, part),
                         static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment)) |
                             static_cast<int>(Qt::AlignVCenter) | Qt::TextSingleLine,
                         text);
    };
    painter.setFont(figures);
    painter.setPen(tokens.text2);
    draw(rect, remark, Qt::AlignRight);
    painter.setPen(row.warns ? tokens.orangeText : tokens.text);
    draw(rect.adjusted(0, 0, -remarkWidth, 0), value, Qt::AlignRight);
    const auto labelFont = look_.fonts().font(TextRole::small);
    const int room = rect.width() - leading - valueWidth - remarkWidth - labelGap;
    painter.setFont(labelFont);
    painter.setPen(tokens.text2);
    draw(rect.adjusted(leading, 0, 0, 0), QFontMetrics(labelFont).elidedText(words(row.label), Qt::ElideRight, room),
         Qt::AlignLeft);
}

QString ValueRows::tipAt(QPoint position) const {
    const QFontMetrics metrics(look_.fonts().figures(TextRole::small));
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (!rowRect(row).adjusted(0, 0, 0, spacing_).contains(position)) continue;
        const auto whole = words(rows_[row].label) + QLatin1Char(' ') + words(rows_[row].value);
        const auto tip = words(rows_[row].tooltip);
        const bool fits = metrics.horizontalAdvance(whole) + labelGap <= width();
        return fits ? tip : tip.isEmpty() ? words(rows_[row].value) : words(rows_[row].value) + "\n\n" + tip;
    }
    return {};
}

bool ValueRows::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), tipAt(help->pos()), this);
    return true;
}

}  // namespace tolvane::desktop
