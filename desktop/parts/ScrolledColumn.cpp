#include "desktop/parts/ScrolledColumn.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tolvane::desktop {

namespace {

constexpr int widest = 900;

}  // namespace

ScrolledColumn::ScrolledColumn(const Look& look, int topMargin, int gap) {
    auto* content = new QWidget;
    auto* sides = new QHBoxLayout(content);
    sides->setContentsMargins(Sizes::margin, topMargin, Sizes::margin, Sizes::margin);
    auto* column = new QWidget;
    column->setMaximumWidth(look.fonts().scaled(widest));
    sides->addWidget(column, 1);
    sides->addStretch(0);
    blocks_ = new QVBoxLayout(column);
    blocks_->setContentsMargins(0, 0, 0, 0);
    blocks_->setSpacing(gap);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

}  // namespace tolvane::desktop
