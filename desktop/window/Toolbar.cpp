#include "desktop/window/Toolbar.h"

#include <QBoxLayout>
#include <QPainter>
#include <QToolButton>
#include <algorithm>

namespace tolvane::desktop {

namespace {

constexpr int outerMargin = 14;
constexpr int controlsGap = Sizes::wideGap;

}  // namespace

Toolbar::Toolbar(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new ElidedLabel(look, TextRole::title, &Tokens::text, this)),
      subtitle_(new ElidedLabel(look, TextRole::caption, &Tokens::text2, this)),
      whole_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      controlsRow_(new QHBoxLayout) {
    whole_->setSpacing(Sizes::gap);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(0);
    titles->addStretch(1);
    titles->addWidget(title_);
    titles->addWidget(subtitle_);
    titles->addStretch(1);
    whole_->addLayout(titles);
    whole_->addLayout(controlsRow_);
    controlsRow_->setSpacing(controlsGap);
    controlsRow_->addStretch(1);
    setMinimumHeight(Sizes::toolbarHeight);
    subtitle_->setFigures(true);
    subtitle_->hide();
}

void Toolbar::setSubtitle(const QString& subtitle) {
    subtitle_->setText(subtitle);
    subtitle_->setVisible(!subtitle.isEmpty());
}

void Toolbar::show(const QString& title, const std::vector<QWidget*>& controls) {
    title_->setText(title);
    for (auto* control : controls_) {
        controlsRow_->removeWidget(control);
        control->hide();
    }
    controls_ = controls;
    for (auto* control : controls_) {
        controlsRow_->addWidget(control);
        control->show();
    }
    arrange();
}

/// Borderless icons move outward, so that their visible edge lines up with the screen's content.
int Toolbar::farMargin() const {
    const bool edged = !controls_.empty() && !qobject_cast<const QToolButton*>(controls_.back());
    return edged ? Sizes::margin : outerMargin;
}

void Toolbar::arrange() {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    whole_->setContentsMargins(mirrored ? farMargin() : Sizes::margin, Sizes::gap,
                               mirrored ? Sizes::margin : farMargin(), Sizes::gap + 1);
    int needed = Sizes::margin + std::max(title_->sizeHint().width(), subtitle_->sizeHint().width()) + farMargin();
    for (auto* control : controls_)
        needed += controlsGap + std::max(control->minimumWidth(), control->minimumSizeHint().width());
    const bool beside = needed <= width();
    whole_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void Toolbar::resizeEvent(QResizeEvent*) { arrange(); }

void Toolbar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(0, height() - 1, width(), 1, look_.tokens().hairline);
}

}  // namespace tolvane::desktop
