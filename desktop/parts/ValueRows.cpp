#include "desktop/parts/ValueRows.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int markSize = 8;
constexpr int markSpace = 14;
constexpr int labelGap = 12;
constexpr int remarkGap = 4;
constexpr int leastWidth = 140;

QString spoken(const std::vector<ValueRow>& rows) {
    QStringList parts;
    for (const auto& row : rows) {
        auto part = qtText(row.label) + QLatin1Char(' ') + qtText(row.value);
        if (!row.remark.empty()) part += QLatin1Char(' ') + qtText(row.remark);
        parts << part;
    }
    return parts.join(QStringLiteral(", "));
}

QColor markColour(const ValueRow& row, const Tokens& tokens) {
    return row.mark == "efficiency" ? tokens.efficiency : tokens.performance;
}

}  // namespace

/// A row's words and the lines that they stand on.
struct ValueRows::Parts {
    QString label, value, remark;
    int leading = 0;
    int remarkWidth = 0;
    int valueLine = 0, remarkLine = 0;
    bool isWhole = true;

    int lines() const { return remarkLine + 1; }
};

ValueRows::ValueRows(const Look& look, int spacing, QWidget* parent) : QWidget(parent), look_(look), spacing_(spacing) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ValueRows::show(std::vector<ValueRow> rows) {
    if (rows == rows_) return;
    const int before = heightForWidth(width());
    rows_ = std::move(rows);
    measuredWidth_.reset();
    setAccessibleName(spoken(rows_));
    if (heightForWidth(width()) != before) updateGeometry();
    update();
}

ValueRows::Parts ValueRows::parts(const ValueRow& row, int width) const {
    const QFontMetrics labels(look_.fonts().font(TextRole::small));
    const QFontMetrics figures(look_.fonts().figures(TextRole::small));
    Parts parts;
    parts.leading = row.mark.empty() ? 0 : markSpace;
    const auto value = oneLine(qtText(row.value));
    const auto remark = qtText(row.remark);
    const auto title = oneLine(qtText(row.label));
    const int label = parts.leading + labels.horizontalAdvance(title) + labelGap;
    const int valueWidth = figures.horizontalAdvance(value);
    parts.remarkWidth = remark.isEmpty() ? 0 : figures.horizontalAdvance(remark) + remarkGap;
    const bool allFits = label + valueWidth + parts.remarkWidth <= width;
    parts.valueLine = label + valueWidth <= width ? 0 : 1;
    const bool remarkFits = allFits || (parts.valueLine == 1 && valueWidth + parts.remarkWidth <= width);
    parts.remarkLine = parts.valueLine + (remark.isEmpty() || remarkFits ? 0 : 1);
    parts.label = labels.elidedText(title, Qt::ElideRight, width - parts.leading);
    parts.value = figures.elidedText(value, Qt::ElideMiddle, width);
    parts.remark = parts.remarkLine == parts.valueLine ? remark : figures.elidedText(remark, Qt::ElideRight, width);
    parts.isWhole = parts.value == value && parts.label == title;
    return parts;
}

/// Layouts ask several times at every change, and measuring texts is most of what a tick costs here.
int ValueRows::heightForWidth(int width) const {
    if (width == measuredWidth_) return measuredHeight_;
    int height = 0;
    for (const auto& row : rows_) height += parts(row, width).lines() * lineHeight() + spacing_;
    measuredWidth_ = width;
    measuredHeight_ = std::max(0, height - spacing_);
    return measuredHeight_;
}

QSize ValueRows::sizeHint() const { return {leastWidth, heightForWidth(std::max(leastWidth, width()))}; }

QSize ValueRows::minimumSizeHint() const {
    return {leastWidth, static_cast<int>(rows_.size()) * (lineHeight() + spacing_) - (rows_.empty() ? 0 : spacing_)};
}

void ValueRows::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    int top = 0;
    for (const auto& row : rows_) {
        const auto shown = parts(row, width());
        paintRow(painter, row, shown, top);
        top += shown.lines() * lineHeight() + spacing_;
    }
}

void ValueRows::paintRow(QPainter& painter, const ValueRow& row, const Parts& shown, int top) const {
    const auto& tokens = look_.tokens();
    const QRect first(0, top, width(), lineHeight());
    const auto placed = [&](QRect part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    const auto leading = mirrored(layoutDirection(), Qt::AlignLeft);
    const auto trailing = mirrored(layoutDirection(), Qt::AlignRight);
    if (!row.mark.empty()) {
        const QRect mark(0, first.center().y() - markSize / 2 + 1, markSize, markSize);
        StyleControls::drawShape(painter, placed(mark), 2, markColour(row, tokens), {});
    }
    painter.setFont(look_.fonts().font(TextRole::small));
    painter.setPen(tokens.text2);
    drawLine(painter, placed(first.adjusted(shown.leading, 0, 0, 0)), shown.label, leading);
    painter.setFont(look_.fonts().figures(TextRole::small));
    drawLine(painter, placed(first.translated(0, shown.remarkLine * lineHeight())), shown.remark, trailing);
    painter.setPen(row.warns ? tokens.orangeText : tokens.text);
    const int behind = shown.remarkLine == shown.valueLine ? shown.remarkWidth : 0;
    drawLine(painter, placed(first.translated(0, shown.valueLine * lineHeight()).adjusted(0, 0, -behind, 0)),
             shown.value, trailing);
}

QString ValueRows::tipAt(QPoint position) const {
    int top = 0;
    for (const auto& row : rows_) {
        const auto shown = parts(row, width());
        const int bottom = top + shown.lines() * lineHeight() + spacing_;
        if (position.y() >= top && position.y() < bottom) {
            auto tip = qtText(row.tooltip);
            if (shown.isWhole) return tip;
            const auto whole = qtText(row.label) + QLatin1Char('\n') + qtText(row.value);
            return tip.isEmpty() ? whole : whole + QStringLiteral("\n\n") + tip;
        }
        top = bottom;
    }
    return {};
}

bool ValueRows::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    showTip(help->globalPos(), tipAt(help->pos()), this);
    return true;
}

}  // namespace tolvane::desktop
