#include "desktop/parts/ParagraphLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include "desktop/look/Paragraph.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int usualWidth = 200;

}  // namespace

ParagraphLabel::ParagraphLabel(const Look& look, TextRole role, QColor Tokens::* colour, QWidget* parent)
    : QWidget(parent), look_(look), role_(role), colour_(colour) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ParagraphLabel::setText(const QString& text) {
    const auto line = oneLine(text);
    if (line == text_) return;
    text_ = line;
    shownWidth_ = -1;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void ParagraphLabel::setMostLines(int lines) {
    mostLines_ = lines;
    shownWidth_ = -1;
    updateGeometry();
}

const QString& ParagraphLabel::shownAt(int width) const {
    if (mostLines_ == 0) return text_;
    if (width == shownWidth_) return shown_;
    shown_ = Paragraph::withoutMiddle(text_, look_.fonts(), role_, width, mostLines_);
    shownWidth_ = width;
    return shown_;
}

int ParagraphLabel::heightForWidth(int width) const {
    return Paragraph(shownAt(width), look_.fonts(), role_, width).height();
}

QSize ParagraphLabel::sizeHint() const { return {usualWidth, heightForWidth(usualWidth)}; }

void ParagraphLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Paragraph(shownAt(width()), look_.fonts(), role_, width())
        .draw(painter, {}, look_.tokens().*colour_, QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
}

bool ParagraphLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || mostLines_ == 0) return QWidget::event(event);
    const bool isCut = shownAt(width()).size() < text_.size();
    showTip(static_cast<QHelpEvent*>(event)->globalPos(), isCut ? text_ : QString(), this);
    return true;
}

}  // namespace tolvane::desktop
