#include "desktop/processes/CopyableText.h"

#include <QScrollBar>
#include <QTextDocument>
#include <QTextOption>
#include <algorithm>

namespace tolvane::desktop {

namespace {

constexpr int mostLines = 10;
/// A command line may be megabytes long; laying it out would block the window.
constexpr int mostCharacters = 20'000;

}  // namespace

CopyableText::CopyableText(const Look& look, QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setFont(look.fonts().fixed());
    setWordWrapMode(QTextOption::WrapAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CopyableText::setText(const QString& text) {
    const auto shown = text.size() > mostCharacters ? text.left(mostCharacters) + QChar(0x2026) : text;
    if (shown == toPlainText()) return;
    setPlainText(shown);
    fit();
}

void CopyableText::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    fit();
}

void CopyableText::fit() {
    /// The document of a plain-text edit reports its height in lines.
    const int lines = std::clamp(static_cast<int>(document()->size().height()), 1, mostLines);
    setFixedHeight(lines * QFontMetrics(font()).lineSpacing() + 2);
}

}  // namespace tolvane::desktop
