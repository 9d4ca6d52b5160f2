#include "desktop/machine/CPUBlock.h"

#include <QVBoxLayout>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

CPUBlock::CPUBlock(const Look& look, QWidget* parent)
    : QWidget(parent),
      headline_(new Headline(look, this)),
      past_(new QWidget(this)),
      chart_(new LoadChart(look, this)),
      caption_(new ParagraphLabel(look, TextRole::caption, &Tokens::text2, this)),
      rows_(new ValueRows(look, Sizes::rowSpacing, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(headline_);
    column->addWidget(past_);
    column->addSpacing(Sizes::rowInset);
    column->addWidget(rows_);
    column->addStretch();
    auto* past = new QVBoxLayout(past_);
    past->setContentsMargins(0, Sizes::rowInset, 0, 0);
    past->setSpacing(Sizes::step);
    past->addWidget(chart_);
    past->addWidget(caption_);
    past_->hide();
}

void CPUBlock::show(const CPUSummary& summary) {
    if (summary == shown_) return;
    shown_ = summary;
    headline_->show(qtText(summary.headline), qtText(summary.busyNow));
    past_->setVisible(!summary.chart.empty());
    chart_->show(summary.chart);
    chart_->setToolTip(qtText(summary.chartText));
    chart_->setAccessibleName(qtText(summary.chartText));
    chart_->setAccessibleDescription(qtText(summary.chartDetail));
    caption_->setText(qtText(summary.chartCaption));
    rows_->show(summary.rows);
}

}  // namespace tolvane::desktop
