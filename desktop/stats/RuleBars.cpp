#include "desktop/stats/RuleBars.h"

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

constexpr int leastRowHeight = 28;
constexpr int barHeight = 10;
constexpr int leastBar = 2;
constexpr int nameGap = 20;
constexpr double nameShare = 0.335, mostForNames = 0.5;
constexpr int leastWidth = 240;

QString spoken(const std::vector<StatsBar>& bars) {
    QStringList parts;
    for (const auto& bar : bars) parts << qtText(bar.rule) + QLatin1Char(' ') + qtText(bar.figure);
    return parts.join(QStringLiteral(", "));
}

}  // namespace

RuleBars::RuleBars(const Look& look, QColor Tokens::* colour, QWidget* parent)
    : QWidget(parent), look_(look), colour_(colour) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void RuleBars::show(std::vector<StatsBar> bars) {
    if (bars == bars_) return;
    bars_ = std::move(bars);
    setAccessibleName(spoken(bars_));
    updateGeometry();
    update();
}

int RuleBars::rowHeight() const { return look_.fonts().height(TextRole::body, leastRowHeight, 10); }

QSize RuleBars::sizeHint() const { return {leastWidth, static_cast<int>(bars_.size()) * rowHeight()}; }

/// The same in every list, so that bars of two of them line up; larger text takes more of the row.
int RuleBars::nameWidth() const {
    return static_cast<int>(width() * std::min(nameShare * look_.fonts().factor(), mostForNames));
}

int RuleBars::figureWidth() const {
    const QFontMetrics metrics(look_.fonts().figures(TextRole::small));
    int widest = metrics.horizontalAdvance(QStringLiteral("888.8 MB"));
    for (const auto& bar : bars_) widest = std::max(widest, metrics.horizontalAdvance(qtText(bar.figure)));
    return widest + nameGap;
}

void RuleBars::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect row(0, 0, width(), rowHeight());
    for (const auto& bar : bars_) {
        paintBar(painter, bar, row);
        row.translate(0, row.height());
    }
}

void RuleBars::paintBar(QPainter& painter, const StatsBar& bar, QRect row) const {
    const auto placed = [&](QRect part) { return QStyle::visualRect(layoutDirection(), row, part); };
    const auto& tokens = look_.tokens();
    const int names = nameWidth();
    painter.setPen(tokens.text);
    painter.setFont(look_.fonts().font(TextRole::body));
    const QRect name(row.left(), row.top(), names - nameGap, row.height());
    drawLine(painter, placed(name),
             painter.fontMetrics().elidedText(oneLine(qtText(bar.rule)), Qt::ElideRight, name.width()),
             mirrored(layoutDirection(), Qt::AlignLeft));
    painter.setFont(look_.fonts().figures(TextRole::small));
    const int figures = figureWidth() - nameGap;
    const QRect figure(row.right() + 1 - figures, row.top(), figures, row.height());
    drawLine(painter, placed(figure), qtText(bar.figure), Qt::AlignRight);
    const int room = std::max(0, row.width() - names - figures - nameGap);
    if (!(bar.share > 0) || room <= 0) return;
    const int length = std::clamp(static_cast<int>(room * bar.share), leastBar, std::max(leastBar, room));
    const QRect shape(row.left() + names, row.center().y() - barHeight / 2 + 1, length, barHeight);
    StyleControls::drawShape(painter, placed(shape), std::min(Sizes::gaugeRadius, length / 2), tokens.*colour_, {});
}

bool RuleBars::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto row = static_cast<std::size_t>(std::max(0, help->pos().y()) / rowHeight());
    const QFontMetrics metrics(look_.fonts().font(TextRole::body));
    const bool isCut =
        row < bars_.size() && metrics.horizontalAdvance(oneLine(qtText(bars_[row].rule))) > nameWidth() - nameGap;
    showTip(help->globalPos(), isCut ? qtText(bars_[row].rule) : QString(), this);
    return true;
}

}  // namespace tolvane::desktop
