#include "desktop/parts/Card.h"

#include <QPainter>
#include <QVBoxLayout>

#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

Card::Card(const Look& look, QWidget* parent) : QWidget(parent), look_(look), column_(new QVBoxLayout(this)) {
    column_->setContentsMargins(1, 1, 1, 1);
    column_->setSpacing(0);
}

void Card::addRow(QWidget* row) {
    rows_.push_back(row);
    column_->addWidget(row);
}

void Card::keepRows(std::size_t count) {
    while (rows_.size() > count) {
        delete rows_.back();
        rows_.pop_back();
    }
}

void Card::paintEvent(QPaintEvent*) {
    const auto& tokens = look_.tokens();
    QPainter painter(this);
    StyleControls::drawShape(painter, rect(), Sizes::cardRadius, tokens.card, tokens.hairline);
    bool first = true;
    for (const auto* row : rows_) {
        if (!row->isVisibleTo(this)) continue;
        if (!first) painter.fillRect(1, row->y(), width() - 2, 1, tokens.hairline);
        first = false;
    }
}

}  // namespace tolvane::desktop
