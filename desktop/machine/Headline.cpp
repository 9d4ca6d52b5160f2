#include "desktop/machine/Headline.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>

#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

namespace {

constexpr int dot = 9;
constexpr int dotGap = 5;

}  // namespace

Headline::Headline(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new ElidedLabel(look, TextRole::headline, &Tokens::text, this)),
      remark_(new ElidedLabel(look, TextRole::small, &Tokens::text, this)) {
    remark_->setFigures(true);
    remark_->setAlignment(Qt::AlignRight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Sizes::gap);
    row->addWidget(title_);
    row->addStretch();
    row->addWidget(remark_);
    setFixedHeight(look.fonts().lineHeight(TextRole::headline));
}

void Headline::show(const QString& title, const QString& remark, const QString& tooltip) {
    title_->setText(title);
    remark_->setText(remark);
    remark_->setTip(tooltip);
}

void Headline::setDot(QColor fill, QColor edge) {
    fill_ = fill;
    edge_ = edge;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    layout()->setContentsMargins(mirrored ? dot + dotGap : 0, 0, mirrored ? 0 : dot + dotGap, 0);
    update();
}

void Headline::paintEvent(QPaintEvent*) {
    if (!fill_.isValid()) return;
    QPainter painter(this);
    const QRect place(width() - dot, (height() - dot) / 2 + 1, dot, dot);
    StyleControls::drawShape(painter, QStyle::visualRect(layoutDirection(), rect(), place), dot / 2.0, fill_, edge_);
}

}  // namespace tolvane::desktop
