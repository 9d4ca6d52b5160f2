#include "desktop/parts/FormRow.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int rowHeight = 36;
constexpr int leading = 12, trailing = 9;
constexpr int labelColumn = 118;
constexpr int hintBelow = 11;

}  // namespace

FormRow::FormRow(const Look& look, const QString& label, QWidget* control, Fit fit, QWidget* parent)
    : QWidget(parent), hint_(new ParagraphLabel(look, TextRole::caption, &Tokens::text2)), control_(control) {
    auto* words = new ElidedLabel(look, TextRole::body, &Tokens::text);
    words->setText(label);
    auto* line = new QHBoxLayout;
    line->setSpacing(Sizes::wideGap);
    line->addWidget(words, fit == Fit::wide ? 0 : 1);
    line->addWidget(control, fit == Fit::wide ? 1 : 0);
    if (fit == Fit::wide) words->setMinimumWidth(look.fonts().scaled(labelColumn));
    auto* column = new QVBoxLayout(this);
    const int air = Sizes::step;
    column->setContentsMargins(leading, air, trailing, air);
    column->setSpacing(Sizes::step);
    column->addLayout(line);
    column->addWidget(hint_);
    hint_->hide();
    setMinimumHeight(look.fonts().height(TextRole::body, rowHeight, 18));
}

void FormRow::setHint(const QString& hint) {
    hint_->setText(hint);
    hint_->setVisible(!hint.isEmpty());
    layout()->setContentsMargins(leading, Sizes::step, trailing, hint.isEmpty() ? Sizes::step : hintBelow);
}

void FormRow::mousePressEvent(QMouseEvent* event) {
    if (qobject_cast<QLineEdit*>(control_)) control_->setFocus(Qt::MouseFocusReason);
    QWidget::mousePressEvent(event);
}

}  // namespace tolvane::desktop
