#include "desktop/look/StyleScrollBar.h"

#include <QStyle>
#include <algorithm>
#include <cstdint>

#include "desktop/look/Palette.h"
#include "desktop/look/StyleControls.h"

namespace tolvane::desktop::StyleScrollBar {

namespace {

constexpr int leastThumb = 28;
/// Distance of the thumb from the view's edges, along the bar and across it.
constexpr int endMargin = 6, edgeMargin = 4;

struct Extent {
    int start = 0;
    int length = 0;
};

bool isVertical(const QStyleOptionSlider& option) { return option.orientation == Qt::Vertical; }

Extent groove(const QStyleOptionSlider& option) {
    const int length = isVertical(option) ? option.rect.height() : option.rect.width();
    return {endMargin, std::max(0, length - 2 * endMargin)};
}

Extent thumb(const QStyleOptionSlider& option) {
    const auto track = groove(option);
    const std::int64_t range = std::int64_t{option.maximum} - option.minimum;
    if (range <= 0) return track;
    const auto share = std::int64_t{track.length} * option.pageStep / (range + option.pageStep);
    const int length = std::min(track.length, std::max(leastThumb, static_cast<int>(share)));
    return {track.start + QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                          track.length - length, option.upsideDown),
            length};
}

QRect placed(const QStyleOptionSlider& option, Extent extent) {
    const auto& rect = option.rect;
    return isVertical(option) ? QRect(rect.left(), rect.top() + extent.start, rect.width(), extent.length)
                              : QRect(rect.left() + extent.start, rect.top(), extent.length, rect.height());
}

}  // namespace

QRect part(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const auto track = groove(option);
    const auto slider = thumb(option);
    const int sliderEnd = slider.start + slider.length;
    switch (part) {
        case QStyle::SC_ScrollBarGroove:
            return option.rect;
        case QStyle::SC_ScrollBarSlider:
            return placed(option, slider);
        case QStyle::SC_ScrollBarSubPage:
            return placed(option, {track.start, slider.start - track.start});
        case QStyle::SC_ScrollBarAddPage:
            return placed(option, {sliderEnd, track.start + track.length - sliderEnd});
        default:
            return {};
    }
}

void draw(QPainter& painter, const QStyleOptionSlider& option, const Tokens& tokens) {
    if (option.maximum <= option.minimum) return;
    const bool wide = option.state.testFlag(QStyle::State_MouseOver) || option.state.testFlag(QStyle::State_Sunken);
    const int width = wide ? Sizes::scrollThumbHover : Sizes::scrollThumb;
    const int edge = wide ? edgeMargin / 2 : edgeMargin;
    auto rect = placed(option, thumb(option));
    if (!isVertical(option)) {
        rect.setTop(rect.bottom() + 1 - edge - width);
        rect.setHeight(width);
    } else if (option.direction == Qt::LeftToRight) {
        rect.setLeft(rect.right() + 1 - edge - width);
        rect.setWidth(width);
    } else {
        rect.setLeft(rect.left() + edge);
        rect.setWidth(width);
    }
    StyleControls::drawShape(painter, rect, width / 2.0, faded(tokens.text, tokens.thumbOpacity), {});
}

}  // namespace tolvane::desktop::StyleScrollBar
