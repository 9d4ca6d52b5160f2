#include "desktop/parts/CPUBlock.h"

#include <QVBoxLayout>

#include "desktop/Words.h"

namespace tolvane::desktop {

CPUBlock::CPUBlock(const Look& look, QWidget* parent)
    : QWidget(parent),
      headline_(new Headline(look, this)),
      chart_(new LoadChart(look, this)),
      caption_(new ParagraphLabel(look, TextRole::caption, &Tokens::text2, this)),
      rows_(new ValueRows(look, Sizes::rowSpacing, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(headline_);
    column->addSpacing(Sizes::rowInset);
    column->addWidget(chart_);
    column->addSpacing(Sizes::step);
    column->addWidget(caption_);
    column->addSpacing(Sizes::rowInset);
    column->addWidget(rows_);
    column->addStretch();
    chart_->hide();
    caption_->hide();
}

void CPUBlock::show(const CPUSummary& summary) {
    if (summary == shown_) return;
    shown_ = summary;
    headline_->show(words(summary.headline), words(summary.busyNow));
    chart_->setVisible(!summary.chart.empty());
    caption_->setVisible(!summary.chart.empty());
    chart_->show(summary.chart);
    chart_->setToolTip(words(summary.chartText));
    chart_->setAccessibleName(words(summary.chartText));
    caption_->setText(words(summary.chartCaption));
    rows_->show(summary.rows);
}

}  // namespace tolvane::desktop
