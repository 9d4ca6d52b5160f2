#include "desktop/processes/SubjectHead.h"

#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace tolvane::desktop {

SubjectHead::SubjectHead(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new ElidedLabel(look, TextRole::headline, &Tokens::text, this)),
      detail_(new ElidedLabel(look, TextRole::caption, &Tokens::text2, this)) {
    detail_->setElideMode(Qt::ElideMiddle);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(title_);
    column->addWidget(detail_);
}

void SubjectHead::show(const QString& title, const QString& detail, const std::optional<std::string>& appPath,
                       bool hasIcon) {
    title_->setText(title);
    detail_->setText(detail);
    detail_->setVisible(!detail.isEmpty());
    appPath_ = appPath;
    hasIcon_ = hasIcon;
    const int icon = hasIcon ? iconSize() + Sizes::gap : 0;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    layout()->setContentsMargins(mirrored ? 0 : icon, 0, mirrored ? icon : 0, 0);
    update();
}

void SubjectHead::paintEvent(QPaintEvent*) {
    if (!hasIcon_) return;
    QPainter painter(this);
    const QRect place(0, (height() - iconSize()) / 2, iconSize(), iconSize());
    const auto icon = QStyle::visualRect(layoutDirection(), rect(), place);
    if (appPath_) {
        look_.appIcons().paint(painter, *appPath_, title_->text(), icon);
    } else {
        look_.icons().paint(painter, "terminal", look_.tokens().text2, icon);
    }
}

}  // namespace tolvane::desktop
