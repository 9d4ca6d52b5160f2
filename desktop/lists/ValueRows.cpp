#include "desktop/lists/ValueRows.h"

#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int markSize = 8;
constexpr int markSpace = 14;
constexpr int labelGap = 12;
constexpr int remarkGap = 4;
constexpr int leastWidth = 140;

QString spoken(const ValueRow& row) {
    const auto name = qtText(row.label) + QLatin1Char(' ') + qtText(row.value);
    return row.remark.empty() ? name : name + QLatin1Char(' ') + qtText(row.remark);
}

QColor Tokens::* markColour(const ValueRow& row) {
    return row.mark == "efficiency" ? &Tokens::efficiency : &Tokens::performance;
}

/// The full texts, if they are cut, followed by the row's own tooltip.
QString tipOf(const ValueRow& row, bool isWhole) {
    auto tip = qtText(row.tooltip);
    if (isWhole) return tip;
    const auto whole = qtText(row.label) + QLatin1Char('\n') + qtText(row.value);
    return tip.isEmpty() ? whole : whole + QStringLiteral("\n\n") + tip;
}

}  // namespace

/// Which lines hold the value and the remark of a row, counted from 0.
struct ValueRows::Lines {
    int value = 0, remark = 0;
    /// Space right of the value for a remark on the same line.
    int remarkSpace = 0;
    bool isWhole = true;
};

ValueRows::ValueRows(const Look& look, int spacing, QWidget* parent) : RowList(look, parent), spacing_(spacing) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ValueRows::show(std::vector<ValueRow> rows) {
    if (rows == rows_) return;
    rows_ = std::move(rows);
    contentsChanged();
}

ValueRows::Lines ValueRows::linesOf(const ValueRow& row, int width) const {
    const QFontMetrics labels(look().fonts().font(TextRole::small));
    const QFontMetrics values(look().fonts().figures(TextRole::small));
    const int leading = row.mark.empty() ? 0 : markSpace;
    const int label = labels.horizontalAdvance(oneLine(qtText(row.label)));
    const int value = values.horizontalAdvance(oneLine(qtText(row.value)));
    const int remark = row.remark.empty() ? 0 : values.horizontalAdvance(qtText(row.remark)) + remarkGap;
    Lines lines;
    lines.value = leading + label + labelGap + value <= width ? 0 : 1;
    const int before = lines.value == 0 ? leading + label + labelGap : 0;
    const bool remarkFits = remark == 0 || before + value + remark <= width;
    lines.remark = lines.value + (remarkFits ? 0 : 1);
    lines.remarkSpace = remarkFits ? remark : 0;
    lines.isWhole = value <= width && label <= width - leading;
    return lines;
}

std::vector<RowList::Row> ValueRows::layOut(int width) const {
    std::vector<Row> rows;
    rows.reserve(rows_.size());
    int top = 0;
    for (const auto& each : rows_) {
        rows.push_back(rowOf(each, top, width));
        top = rows.back().place.bottom() + 1;
    }
    return rows;
}

RowList::Row ValueRows::rowOf(const ValueRow& shown, int top, int width) const {
    const auto lines = linesOf(shown, width);
    const QRect first(0, top, width, lineHeight());
    Row row{.place = QRect(0, top, width, (lines.remark + 1) * lineHeight() + spacing_),
            .name = spoken(shown),
            .value = qtText(shown.value),
            .tip = tipOf(shown, lines.isWhole)};
    const bool isMarked = !shown.mark.empty();
    if (isMarked) {
        row.shape = Shape{.place = QRect(0, first.center().y() - markSize / 2 + 1, markSize, markSize),
                          .radius = 2,
                          .colour = markColour(shown)};
    }
    const auto values = look().fonts().figures(TextRole::small);
    const auto line = [&](int number) { return first.translated(0, number * lineHeight()); };
    row.texts = {
        {.place = first.adjusted(isMarked ? markSpace : 0, 0, 0, 0),
         .text = oneLine(qtText(shown.label)),
         .font = look().fonts().font(TextRole::small),
         .colour = &Tokens::text2,
         .alignment = leading()},
        {.place = line(lines.remark),
         .text = qtText(shown.remark),
         .font = values,
         .colour = &Tokens::text2,
         .alignment = trailing()},
        {.place = line(lines.value).adjusted(0, 0, -lines.remarkSpace, 0),
         .text = oneLine(qtText(shown.value)),
         .font = values,
         .colour = shown.warns ? &Tokens::orangeText : &Tokens::text,
         .alignment = trailing(),
         .elide = Qt::ElideMiddle},
    };
    return row;
}

int ValueRows::heightForWidth(int width) const {
    const auto& rows = rowsAt(width);
    return rows.empty() ? 0 : rows.back().place.bottom() + 1 - spacing_;
}

QSize ValueRows::sizeHint() const { return {leastWidth, heightForWidth(std::max(leastWidth, width()))}; }

QSize ValueRows::minimumSizeHint() const {
    return {leastWidth, static_cast<int>(rows_.size()) * (lineHeight() + spacing_) - (rows_.empty() ? 0 : spacing_)};
}

}  // namespace tolvane::desktop
