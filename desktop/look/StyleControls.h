#pragma once

#include <QPainter>
#include <QStyleOption>

#include "desktop/look/Look.h"

/// Buttons, fields and boxes as the style draws them.
namespace tolvane::desktop::StyleControls {

/// A rounded shape whose edge lies on whole pixels. Either colour may be invalid for none.
void drawShape(QPainter& painter, QRect rect, double radius, QColor ground, QColor edge);

void drawButton(QPainter& painter, const QStyleOptionButton& option, const Tokens& tokens, bool destructive);
/// Its icon and its words in the middle, the words as they read by themselves.
void drawButtonLabel(QPainter& painter, const QStyleOptionButton& option);
/// The words of a filled button are white.
bool isFilled(const QStyleOptionButton& option);
void drawToolButton(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
void drawField(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
void drawCheckBox(QPainter& painter, const QStyleOption& option, const Look& look);
void drawTip(QPainter& painter, const QStyleOption& option, const Tokens& tokens);
/// The ring around a control that the keyboard works on; `radius` is the control's own.
void drawFocusRing(QPainter& painter, QRect control, double radius, const Tokens& tokens);

}  // namespace tolvane::desktop::StyleControls
