#include "desktop/projects/IconLabel.h"

#include <QHBoxLayout>

namespace tolvane::desktop {

namespace {

constexpr int smallIcon = 13;

}  // namespace

IconLabel::IconLabel(const Look& look, QColor Tokens::* colour, QWidget* parent)
    : QWidget(parent),
      icon_(new LineIcon(look, {}, colour, smallIcon, this)),
      label_(new ElidedLabel(look, TextRole::small, colour, this)) {
    label_->setElideMode(Qt::ElideMiddle);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Sizes::step);
    row->addWidget(icon_);
    row->addWidget(label_, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void IconLabel::show(std::string_view icon, const QString& text) {
    setVisible(!text.isEmpty());
    if (text.isEmpty()) return;
    icon_->setIcon(icon);
    label_->setText(text);
}

}  // namespace tolvane::desktop
