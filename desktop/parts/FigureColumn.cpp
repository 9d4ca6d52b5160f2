#include "desktop/parts/FigureColumn.h"

#include <QFontMetrics>
#include <QVBoxLayout>

namespace tolvane::desktop {

FigureColumn::FigureColumn(const Look& look, const QString& widestSample, QWidget* parent)
    : QWidget(parent),
      title_(new ElidedLabel(look, TextRole::small, &Tokens::text2, this)),
      value_(new ElidedLabel(look, TextRole::body, &Tokens::text, this)) {
    value_->setFigures(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (auto* label : {title_, value_}) {
        label->setAlignment(Qt::AlignRight);
        column->addWidget(label);
    }
    const QFontMetrics metrics(look.fonts().figures(TextRole::body));
    setMinimumWidth(metrics.horizontalAdvance(widestSample) + Sizes::columnGap);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void FigureColumn::show(const QString& title, const QString& value) {
    title_->setText(title);
    value_->setText(value);
}

}  // namespace tolvane::desktop
