#include "desktop/parts/ParagraphLabel.h"

#include <QPainter>
#include <QStyle>

#include "desktop/parts/Paragraph.h"

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
    if (text == text_) return;
    text_ = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

int ParagraphLabel::heightForWidth(int width) const { return Paragraph(text_, look_.fonts(), role_, width).height(); }

QSize ParagraphLabel::sizeHint() const { return {usualWidth, heightForWidth(usualWidth)}; }

void ParagraphLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Paragraph(text_, look_.fonts(), role_, width())
        .draw(painter, {}, look_.tokens().*colour_, QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
}

}  // namespace tolvane::desktop
