#pragma once

#include <QPainter>
#include <QStyleOptionSlider>

#include "desktop/look/Tokens.h"

/// A rounded thumb without track or arrows.
namespace tolvane::desktop::StyleScrollBar {

void draw(QPainter& painter, const QStyleOptionSlider& option, const Tokens& tokens);
/// An empty rectangle for parts that do not exist.
QRect part(const QStyleOptionSlider& option, QStyle::SubControl part);

}  // namespace tolvane::desktop::StyleScrollBar
