#include "desktop/projects/NumberColumn.h"

#include <QFontMetrics>
#include <QVBoxLayout>

#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

NumberColumn::NumberColumn(const Look& look, const QString& widestSample, QWidget* parent)
    : QWidget(parent),
      title_(new ElidedLabel(look, TextRole::small, &Tokens::text2, this)),
      value_(new ElidedLabel(look, TextRole::body, &Tokens::text, this)) {
    value_->setFigures(true);
    auto* column = new QVBoxLayout(this);
    // Keeps an unusually wide number clear of its neighbour.
    column->setContentsMargins(mirrored(layoutDirection(), {Sizes::columnGap, 0, 0, 0}));
    column->setSpacing(0);
    for (auto* label : {title_, value_}) {
        label->setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
        column->addWidget(label);
    }
    const QFontMetrics metrics(look.fonts().figures(TextRole::body));
    usual_ = metrics.horizontalAdvance(widestSample) + Sizes::columnGap;
    setTight(false);
}

void NumberColumn::setTight(bool tight) {
    setMinimumWidth(tight ? 0 : usual_);
    setSizePolicy(tight ? QSizePolicy::Preferred : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void NumberColumn::show(const QString& title, const QString& value) {
    title_->setText(title);
    value_->setText(value);
}

}  // namespace tolvane::desktop
