#include "desktop/panel/PanelRows.h"

#include <algorithm>
#include <utility>

namespace tolvane::desktop {

namespace {

constexpr int leastRowHeight = 24;
constexpr int rowPadding = 6;

QString spoken(const PanelRow& row) {
    QStringList parts{row.title, row.tag, row.quietFigure, row.figure};
    parts.removeAll(QString());
    return parts.join(QLatin1Char(' '));
}

}  // namespace

PanelRows::PanelRows(const Look& look, int columnWidth, std::string_view icon, QString quietTip, QWidget* parent)
    : RowList(look, parent), columnWidth_(columnWidth), icon_(icon), quietTip_(std::move(quietTip)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PanelRows::show(std::vector<PanelRow> rows) {
    if (rows == rows_) return;
    rows_ = std::move(rows);
    contentsChanged();
}

int PanelRows::rowHeight() const {
    const auto& fonts = look().fonts();
    const int body = fonts.lineHeight(TextRole::body);
    const bool hasTags = !rows_.empty() && !rows_.front().tag.isEmpty();
    return hasTags ? body + fonts.lineHeight(TextRole::caption) + rowPadding
                   : std::max(leastRowHeight, body + rowPadding);
}

int PanelRows::columnWidth() const { return look().fonts().scaled(columnWidth_); }

QSize PanelRows::sizeHint() const { return {0, static_cast<int>(rows_.size()) * rowHeight()}; }

std::vector<RowList::Row> PanelRows::layOut(int width) const {
    std::vector<Row> rows;
    rows.reserve(rows_.size());
    QRect place(0, 0, width, rowHeight());
    for (const auto& each : rows_) {
        rows.push_back(rowOf(each, place));
        place.translate(0, place.height());
    }
    return rows;
}

RowList::Row PanelRows::rowOf(const PanelRow& shown, QRect place) const {
    const auto& fonts = look().fonts();
    const int side = fonts.scaled(Sizes::icon);
    const int columns = shown.quietFigure.isEmpty() ? 1 : 2;
    const auto room = place.adjusted(side + Sizes::gap, 0, -columns * columnWidth() - Sizes::gap, 0);
    Row row{.place = place, .name = spoken(shown), .value = shown.figure};
    row.icon = Icon{.place = QRect(place.left(), place.center().y() - side / 2 + 1, side, side),
                    .appPath = shown.appPath,
                    .symbol = icon_,
                    .title = shown.title};
    row.texts = titlesOf(shown, room);
    const auto addValue = [&](int left, const QString& text, QColor Tokens::* colour, const QString& tip) {
        row.texts.push_back({.place = QRect(left, place.top(), columnWidth(), place.height()),
                             .text = text,
                             .font = fonts.figures(TextRole::small),
                             .colour = colour,
                             .alignment = Qt::AlignRight,
                             .elide = Qt::ElideNone,
                             .tip = tip});
    };
    const int right = place.right() + 1;
    addValue(right - columnWidth(), shown.figure, &Tokens::text, {});
    if (columns == 2) addValue(right - 2 * columnWidth() - Sizes::gap, shown.quietFigure, &Tokens::text2, quietTip_);
    const QFontMetrics metrics(fonts.font(TextRole::body));
    if (metrics.horizontalAdvance(shown.title) > room.width()) row.tip = shown.title;
    return row;
}

/// The title, and below it the tag if there is one.
std::vector<RowList::Text> PanelRows::titlesOf(const PanelRow& shown, QRect room) const {
    const auto& fonts = look().fonts();
    const Text title{.place = room, .text = shown.title, .font = fonts.font(TextRole::body), .alignment = leading()};
    if (shown.tag.isEmpty()) return {title};
    const int body = fonts.lineHeight(TextRole::body), caption = fonts.lineHeight(TextRole::caption);
    const int top = room.top() + (room.height() - body - caption) / 2;
    auto above = title;
    above.place = QRect(room.left(), top, room.width(), body);
    return {above,
            {.place = QRect(room.left(), top + body, room.width(), caption),
             .text = shown.tag,
             .font = fonts.font(TextRole::caption),
             .colour = &Tokens::text2,
             .alignment = leading()}};
}

}  // namespace tolvane::desktop
