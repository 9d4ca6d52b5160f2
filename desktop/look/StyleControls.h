#pragma once

#include <QPainter>
#include <QStyleOption>

#include "desktop/look/Look.h"

/// Buttons, fields and boxes as the style draws them.
namespace tolvane::desktop::StyleControls {

/// A rounded shape whose edge lies on whole pixels. An invalid colour leaves out the fill or the edge.
void drawShape(QPainter& painter, QRect rect, double radius, QColor ground, QColor edge);

void drawButton(QPainter& painter, const QStyleOptionButton& option, const Tokens& tokens, bool destructive);
/// Draws icon and text centred; the text keeps its own reading direction.
void drawButtonLabel(QPainter& painter, const QStyleOptionButton& option);
/// Whether the button is drawn filled, with a white label.
bool isFilled(const QStyleOptionButton& option);
void drawToolButton(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
void drawField(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
void drawCheckBox(QPainter& painter, const QStyleOption& option, const Look& look);
void drawTip(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
/// The focus ring around a control; `radius` is the control's own.
void drawFocusRing(QPainter& painter, QRect control, double radius, const Tokens& tokens);

}  // namespace tolvane::desktop::StyleControls
