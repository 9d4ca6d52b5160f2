#include "desktop/projects/CopyableLine.h"

#include <QFocusEvent>

#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

/// The margin that QLineEdit keeps on each side of its text.
constexpr int innerMargin = 2;
constexpr int above = 3;

}  // namespace

CopyableLine::CopyableLine(const Look& look, QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);
    setProperty("bare", true);
    // At the title's side, whichever direction the command reads.
    setAlignment(mirrored(layoutDirection(), Qt::AlignLeft));
    setFont(look.fonts().fixed());
    setTextMargins(-innerMargin, 0, -innerMargin, 0);
    auto colours = palette();
    colours.setBrush(QPalette::Base, Qt::NoBrush);
    colours.setColor(QPalette::Text, look.tokens().text2);
    setPalette(colours);
    connect(&look, &Look::changed, this, [this, &look] {
        auto now = palette();
        now.setColor(QPalette::Text, look.tokens().text2);
        setPalette(now);
    });
    setFixedHeight(fontMetrics().height() + above);
}

void CopyableLine::setWhole(const QString& whole) {
    const auto line = oneLine(whole);
    if (line == whole_) return;
    whole_ = line;
    setAccessibleName(whole_);
    fit();
}

void CopyableLine::focusInEvent(QFocusEvent* event) {
    setText(whole_);
    QLineEdit::focusInEvent(event);
}

void CopyableLine::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // The context menu copies the selection, so keep the full text while it is open.
    if (event->reason() != Qt::PopupFocusReason) fit();
}

void CopyableLine::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    if (!hasFocus()) fit();
}

void CopyableLine::fit() {
    const auto shown = fontMetrics().elidedText(whole_, Qt::ElideMiddle, width());
    setText(shown);
    setToolTip(shown == whole_ ? QString() : tip(whole_));
    setCursorPosition(0);
}

}  // namespace tolvane::desktop
