#include "desktop/stats/RuleBars.h"

#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int leastRowHeight = 28;
constexpr int barHeight = 10;
constexpr int leastBar = 2;
constexpr int nameGap = 20;
constexpr double nameShare = 0.335, mostForNames = 0.5;
constexpr int leastWidth = 240;

}  // namespace

RuleBars::RuleBars(const Look& look, QColor Tokens::* colour, QWidget* parent)
    : RowList(look, parent), colour_(colour) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void RuleBars::show(std::vector<StatsBar> bars) {
    if (bars == bars_) return;
    bars_ = std::move(bars);
    contentsChanged();
}

int RuleBars::rowHeight() const { return look().fonts().height(TextRole::body, leastRowHeight, 10); }

QSize RuleBars::sizeHint() const { return {leastWidth, static_cast<int>(bars_.size()) * rowHeight()}; }

/// The same in every list, so that the bars of two lists line up; larger text takes a larger share of the row.
int RuleBars::nameWidth(int width) const {
    return static_cast<int>(width * std::min(nameShare * look().fonts().factor(), mostForNames));
}

int RuleBars::valueWidth() const {
    const QFontMetrics metrics(look().fonts().figures(TextRole::small));
    int widest = metrics.horizontalAdvance(QStringLiteral("888.8 MB"));
    for (const auto& bar : bars_) widest = std::max(widest, metrics.horizontalAdvance(qtText(bar.figure)));
    return widest;
}

std::vector<RowList::Row> RuleBars::layOut(int width) const {
    std::vector<Row> rows;
    rows.reserve(bars_.size());
    QRect place(0, 0, width, rowHeight());
    for (const auto& bar : bars_) {
        rows.push_back(rowOf(bar, place));
        place.translate(0, place.height());
    }
    return rows;
}

RowList::Row RuleBars::rowOf(const StatsBar& bar, QRect place) const {
    const auto& fonts = look().fonts();
    const int names = nameWidth(place.width()), values = valueWidth();
    const auto rule = oneLine(qtText(bar.rule)), value = qtText(bar.figure);
    const QRect name(place.left(), place.top(), names - nameGap, place.height());
    Row row{.place = place, .name = rule + QLatin1Char(' ') + value, .value = value};
    row.texts = {
        {.place = name, .text = rule, .font = fonts.font(TextRole::body), .alignment = leading()},
        {.place = QRect(place.right() + 1 - values, place.top(), values, place.height()),
         .text = value,
         .font = fonts.figures(TextRole::small),
         .alignment = Qt::AlignRight,
         .elide = Qt::ElideNone},
    };
    const QFontMetrics metrics(fonts.font(TextRole::body));
    if (metrics.horizontalAdvance(rule) > name.width()) row.tip = qtText(bar.rule);
    const int room = std::max(0, place.width() - names - values - nameGap);
    if (!(bar.share > 0) || room <= 0) return row;
    const int length = std::clamp(static_cast<int>(room * bar.share), leastBar, std::max(leastBar, room));
    row.shape = Shape{.place = QRect(place.left() + names, place.center().y() - barHeight / 2 + 1, length, barHeight),
                      .radius = static_cast<double>(std::min(Sizes::gaugeRadius, length / 2)),
                      .colour = colour_};
    return row;
}

}  // namespace tolvane::desktop
