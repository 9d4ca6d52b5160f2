#include "desktop/history/MomentPane.h"

#include <QBoxLayout>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

/// In a narrower pane the two lists are stacked.
constexpr int leastForTwo = 520;
constexpr int listsGap = 32;
constexpr int blockGap = 20;

}  // namespace

MomentPane::MomentPane(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      heading_(new ElidedLabel(look, TextRole::title, &Tokens::text)),
      sentence_(new ParagraphLabel(look, TextRole::body, &Tokens::text)),
      hint_(new ParagraphLabel(look, TextRole::small, &Tokens::text2)),
      lists_(new QBoxLayout(QBoxLayout::LeftToRight)),
      largest_(new HolderRows(look)),
      grew_(new HolderRows(look)),
      rules_(new HolderRows(look)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(heading_);
    column->addWidget(sentence_);
    column->addWidget(hint_);
    column->addSpacing(blockGap - Sizes::step);
    lists_->setSpacing(listsGap);
    lists_->addWidget(largest_, 1, Qt::AlignTop);
    lists_->addWidget(grew_, 1, Qt::AlignTop);
    column->addLayout(lists_);
    column->addSpacing(blockGap - Sizes::step);
    column->addWidget(rules_);
}

void MomentPane::show(const MomentDetail& detail) {
    heading_->setText(qtText(detail.heading));
    sentence_->setText(qtText(detail.sentence));
    hint_->setText(qtText(detail.hint));
    hint_->setVisible(!detail.hint.empty());
    largest_->show(detail.largest);
    grew_->show(detail.grew);
    rules_->show(qtText(MomentDetail::rulesTitle), detail.rules);
    rules_->setVisible(!detail.rules.empty());
}

void MomentPane::resizeEvent(QResizeEvent*) {
    const bool two = width() >= look_.fonts().scaled(leastForTwo);
    lists_->setDirection(two ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

}  // namespace tolvane::desktop
