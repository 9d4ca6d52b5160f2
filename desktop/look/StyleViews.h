#pragma once

#include <QPainter>
#include <QStyleOption>

#include "desktop/look/Look.h"

/// Rows, heads and disclosure of tables and lists as the style draws them.
namespace tolvane::desktop::StyleViews {

/// The ground of a selected row or of the one under the pointer; nothing for others.
void drawRow(QPainter& painter, const QStyleOption& option, QRect rect, double radius, const Tokens& tokens);
/// The ring of the current row or cell, inside its edge.
void drawFocus(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
void drawDisclosure(QPainter& painter, const QStyleOption& option, const Look& look);
/// Where the chevron of a row of a tree stands, given its indentation's rectangle.
QRect disclosureRect(const QStyleOption& option);

void drawHeadGround(QPainter& painter, QRect rect, const Tokens& tokens);
void drawHeadLabel(QPainter& painter, const QStyleOptionHeader& option, const Look& look);
/// What a head needs when the table is sorted by it, without the gap to its neighbour.
int sortedHeadWidth(const QString& title, const Fonts& fonts);
/// Where the text of a column stands: the first keeps the page's margin, the last leaves room for the scroll bar.
QRect columnText(QRect section, bool first, bool last, Qt::LayoutDirection direction);

}  // namespace tolvane::desktop::StyleViews
