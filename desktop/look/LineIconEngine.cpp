#include "desktop/look/LineIconEngine.h"

#include <QPainter>
#include <algorithm>
#include <utility>

namespace tolvane::desktop {

LineIconEngine::LineIconEngine(const Icons& icons, std::string name, IconRole role)
    : icons_(icons), name_(std::move(name)), role_(role) {}

QColor LineIconEngine::colour(QIcon::Mode mode, QIcon::State state) const {
    if (mode == QIcon::Disabled) return icons_.tokens().disabled;
    const bool chosen = mode == QIcon::Selected || state == QIcon::On;
    return icons_.colour(chosen && role_ == IconRole::plain ? IconRole::accent : role_);
}

void LineIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    icons_.paint(*painter, name_, colour(mode, state), rect);
}

QPixmap LineIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return scaledPixmap(size, mode, state, 1);
}

/// `size` comes in device pixels; the stroke belongs to the size that the user sees.
QPixmap LineIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) {
    const double ratio = scale > 0 ? scale : 1;
    const auto seen = static_cast<int>(std::min(size.width(), size.height()) / ratio);
    return icons_.pixmap(name_, colour(mode, state), std::max(1, seen), ratio);
}

}  // namespace tolvane::desktop
