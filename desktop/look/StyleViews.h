#pragma once

#include <QPainter>
#include <QStyleOption>

#include "desktop/look/Look.h"

/// Draws rows, column heads and disclosure arrows of tables and lists.
namespace tolvane::desktop::StyleViews {

/// Draws the background of a selected or hovered row; draws nothing for other rows.
void drawRow(QPainter& painter, const QStyleOption& option, QRect rect, double radius, const Tokens& tokens);
/// The focus ring of the current row or cell, inside its edge.
void drawFocus(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
void drawDisclosure(QPainter& painter, const QStyleOption& option, const Look& look);
/// The rectangle of a tree row's chevron within its indentation.
QRect disclosureRect(const QStyleOption& option);

void drawHeadGround(QPainter& painter, QRect rect, const Tokens& tokens);
void drawHeadLabel(QPainter& painter, const QStyleOptionHeader& option, const Look& look);
/// The width that a head needs when the table is sorted by its column, without the gap to the next column.
int sortedHeadWidth(const QString& title, const Fonts& fonts);
/// The text area of a column: the first keeps the page's margin, the last leaves room for the scroll bar.
QRect columnText(QRect section, bool first, bool last, Qt::LayoutDirection direction);

}  // namespace tolvane::desktop::StyleViews
