#include "desktop/parts/NoticeBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>

#include "desktop/look/TextLine.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/IconButton.h"

namespace tolvane::desktop {

NoticeBar::NoticeBar(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      sentence_(new ElidedLabel(look, TextRole::small, &Tokens::text, this)),
      close_(new IconButton(look, "xmark", tr("Close"), this)) {
    close_->setObjectName(QStringLiteral("close"));
    auto* row = new QHBoxLayout(this);
    // Aligned with the names of the table below.
    row->setContentsMargins(mirrored(
        layoutDirection(), {Sizes::margin + Sizes::icon + Sizes::gap, Sizes::step, Sizes::step, Sizes::step + 1}));
    row->setSpacing(Sizes::gap);
    row->addWidget(sentence_, 1);
    row->addWidget(close_);
    connect(close_, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

QString NoticeBar::sentence() const { return sentence_->text(); }

void NoticeBar::tell(const QString& sentence) {
    sentence_->setText(sentence);
    setAccessibleName(sentence);
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QRect NoticeBar::iconPlace() const {
    const QRect place(Sizes::margin, (height() - Sizes::icon) / 2, Sizes::icon, Sizes::icon);
    return QStyle::visualRect(layoutDirection(), rect(), place);
}

void NoticeBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), look_.tokens().tagOrange);
    painter.fillRect(0, height() - 1, width(), 1, look_.tokens().hairline);
    look_.icons().paint(painter, "exclamationmark.triangle", look_.tokens().orangeText, iconPlace());
}

}  // namespace tolvane::desktop
