#pragma once

#include <QPainter>
#include <QStyleOption>

#include "desktop/look/Look.h"

/// Menus as the style draws them.
namespace tolvane::desktop::StyleMenus {

/// Between the edge and the items.
inline constexpr int margin = Sizes::step;

void drawPanel(QPainter& painter, QRect menu, const Tokens& tokens);
void drawFrame(QPainter& painter, QRect menu, const Tokens& tokens);
/// Draws an entry or a separator. `mnemonics` says whether the letters that choose an entry are underlined.
void drawItem(QPainter& painter, const QStyleOptionMenuItem& item, bool mnemonics, const Look& look);
/// `contents` is the size of the item's text; the menu itself adds the column of shortcuts.
QSize itemSize(const QStyleOptionMenuItem& item, QSize contents, const Fonts& fonts);

}  // namespace tolvane::desktop::StyleMenus
