#include "desktop/history/HolderRows.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int leastRowHeight = 26;
constexpr int leastWidth = 240;
constexpr int valueGap = 16;

}  // namespace

HolderRows::HolderRows(const Look& look, QWidget* parent) : RowList(look, parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void HolderRows::show(const HolderList& list) {
    std::vector<Entry> entries;
    entries.reserve(list.rows.size());
    for (const auto& row : list.rows) entries.push_back({oneLine(qtText(row.title)), row.appPath, qtText(row.figure)});
    take(qtText(list.title), std::move(entries), qtText(list.empty), true);
}

void HolderRows::show(const QString& title, const std::vector<RuleActRow>& rows) {
    std::vector<Entry> entries;
    entries.reserve(rows.size());
    for (const auto& row : rows) entries.push_back({oneLine(qtText(row.text)), std::nullopt, qtText(row.time)});
    take(title, std::move(entries), {}, false);
}

void HolderRows::take(const QString& title, std::vector<Entry> entries, const QString& empty, bool hasIcons) {
    title_ = title;
    entries_ = std::move(entries);
    empty_ = empty;
    hasIcons_ = hasIcons;
    setAccessibleName(title_);
    contentsChanged();
}

int HolderRows::headHeight() const { return look().fonts().lineHeight(TextRole::section) + Sizes::step; }

int HolderRows::rowHeight() const { return look().fonts().height(TextRole::body, leastRowHeight); }

QSize HolderRows::sizeHint() const {
    const int rows = std::max<int>(1, static_cast<int>(entries_.size()));
    return {leastWidth, headHeight() + rows * rowHeight()};
}

void HolderRows::paintEvent(QPaintEvent* event) {
    RowList::paintEvent(event);
    QPainter painter(this);
    painter.setFont(look().fonts().font(TextRole::section));
    painter.setPen(look().tokens().text);
    drawLine(painter, QRect(0, 0, width(), look().fonts().lineHeight(TextRole::section)), title_, leading());
}

std::vector<RowList::Row> HolderRows::layOut(int width) const {
    QRect place(0, headHeight(), width, rowHeight());
    if (entries_.empty()) return {emptyRow(place)};
    std::vector<Row> rows;
    rows.reserve(entries_.size());
    for (const auto& each : entries_) {
        rows.push_back(rowOf(each, place));
        place.translate(0, place.height());
    }
    return rows;
}

/// The width of the widest value, so that values line up in a column.
int HolderRows::valueWidth() const {
    const QFontMetrics metrics(look().fonts().figures(TextRole::body));
    int widest = 0;
    for (const auto& each : entries_) widest = std::max(widest, metrics.horizontalAdvance(each.value));
    return widest;
}

RowList::Row HolderRows::rowOf(const Entry& entry, QRect place) const {
    const auto& fonts = look().fonts();
    const int side = fonts.scaled(Sizes::icon);
    const int values = valueWidth();
    const auto room = place.adjusted(hasIcons_ ? side + Sizes::gap : 0, 0, -values - valueGap, 0);
    Row row{.place = place, .name = entry.title + QLatin1Char(' ') + entry.value, .value = entry.value};
    if (hasIcons_) {
        row.icon = Icon{.place = QRect(place.left(), place.top() + (place.height() - side) / 2, side, side),
                        .appPath = entry.appPath,
                        .symbol = "terminal",
                        .title = entry.title};
    }
    row.texts = {
        {.place = room, .text = entry.title, .font = fonts.font(TextRole::body), .alignment = leading()},
        {.place = place.adjusted(place.width() - values, 0, 0, 0),
         .text = entry.value,
         .font = fonts.figures(TextRole::body),
         .colour = hasIcons_ ? &Tokens::text : &Tokens::text2,
         .alignment = Qt::AlignRight,
         .elide = Qt::ElideNone},
    };
    const QFontMetrics metrics(fonts.font(TextRole::body));
    if (metrics.horizontalAdvance(entry.title) > room.width()) row.tip = entry.title;
    return row;
}

RowList::Row HolderRows::emptyRow(QRect place) const {
    return {.place = place,
            .name = empty_,
            .texts = {{.place = place,
                       .text = empty_,
                       .font = look().fonts().font(TextRole::body),
                       .colour = &Tokens::text2,
                       .alignment = leading()}}};
}

}  // namespace tolvane::desktop
