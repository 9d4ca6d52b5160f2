#include "desktop/machine/MemoryBlock.h"

#include <QVBoxLayout>

#include "desktop/look/QtText.h"
#include "desktop/machine/LevelColours.h"

namespace tolvane::desktop {

MemoryBlock::MemoryBlock(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      headline_(new Headline(look, this)),
      gauge_(new Gauge(look, this)),
      rows_(new ValueRows(look, Sizes::rowSpacing, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(headline_);
    column->addSpacing(Sizes::rowInset);
    column->addWidget(gauge_);
    column->addSpacing(Sizes::gap);
    column->addWidget(rows_);
    column->addStretch();
    connect(&look, &Look::changed, this, [this] { dress(); });
}

void MemoryBlock::show(const MemorySummary& summary) {
    if (summary == shown_) return;
    shown_ = summary;
    headline_->show(qtText(summary.headline), qtText(summary.pressureText), qtText(summary.pressureTooltip));
    gauge_->setAccessibleName(qtText(summary.gaugeAccessibleText));
    rows_->show(summary.rows);
    dress();
}

void MemoryBlock::dress() {
    const auto colours = LevelColours::of(shown_.pressure, look_.tokens());
    headline_->setDot(colours.fill, colours.edge);
    gauge_->show(shown_.usedFraction, colours.fill, colours.edge);
}

}  // namespace tolvane::desktop
