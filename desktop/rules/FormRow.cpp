#include "desktop/rules/FormRow.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <algorithm>

#include "desktop/look/TextLine.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int rowHeight = 36;
constexpr int leading = 12, trailing = 9;
constexpr int labelColumn = 118;
constexpr int fieldLeast = 120;
constexpr int hintBelow = 11;

}  // namespace

FormRow::FormRow(const Look& look, const QString& label, QWidget* control, Fit fit, QWidget* parent)
    : QWidget(parent),
      look_(look),
      fit_(fit),
      label_(new ElidedLabel(look, TextRole::body, &Tokens::text)),
      control_(control),
      line_(new QBoxLayout(QBoxLayout::LeftToRight)),
      hint_(new ParagraphLabel(look, TextRole::caption, &Tokens::text2)) {
    label_->setText(label);
    line_->setSpacing(Sizes::wideGap);
    line_->addWidget(label_, fit == Fit::wide ? 0 : 1);
    line_->addWidget(control, fit == Fit::wide ? 1 : 0);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(mirrored(layoutDirection(), {leading, Sizes::step, trailing, Sizes::step}));
    column->setSpacing(Sizes::step);
    column->addLayout(line_);
    column->addWidget(hint_);
    hint_->hide();
    setMinimumHeight(look.fonts().height(TextRole::body, rowHeight, 18));
}

void FormRow::setHint(const QString& hint) {
    hint_->setText(hint);
    hint_->setVisible(!hint.isEmpty());
    layout()->setContentsMargins(
        mirrored(layoutDirection(), {leading, Sizes::step, trailing, hint.isEmpty() ? Sizes::step : hintBelow}));
}

QSize FormRow::minimumSizeHint() const {
    const int needed = fit_ == Fit::wide ? look_.fonts().scaled(fieldLeast) : control_->minimumSizeHint().width();
    return {leading + needed + trailing, layout()->totalMinimumSize().height()};
}

bool FormRow::fitsBeside() const {
    const auto& fonts = look_.fonts();
    const int label = label_->sizeHint().width();
    const int column = fit_ == Fit::wide ? std::max(label, fonts.scaled(labelColumn)) : label;
    const int needed = fit_ == Fit::wide ? fonts.scaled(fieldLeast) : control_->sizeHint().width();
    return leading + column + Sizes::wideGap + needed + trailing <= width();
}

void FormRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool beside = fitsBeside();
    label_->setMinimumWidth(beside && fit_ == Fit::wide ? look_.fonts().scaled(labelColumn) : 0);
    line_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    line_->setSpacing(beside ? Sizes::wideGap : Sizes::step);
}

void FormRow::mousePressEvent(QMouseEvent* event) {
    if (qobject_cast<QLineEdit*>(control_)) control_->setFocus(Qt::MouseFocusReason);
    QWidget::mousePressEvent(event);
}

}  // namespace tolvane::desktop
