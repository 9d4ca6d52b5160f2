#include "desktop/suggestions/SuggestionCard.h"

#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/StyleControls.h"

namespace tolvane::desktop {

class SuggestionCard::Ground : public QWidget {
public:
    Ground(const Look& look, const std::vector<SuggestionRowWidget*>& rows) : look_(look), rows_(rows) {}

protected:
    void paintEvent(QPaintEvent*) override {
        const auto& tokens = look_.tokens();
        QPainter painter(this);
        StyleControls::drawShape(painter, rect(), Sizes::cardRadius, tokens.card, tokens.hairline);
        for (const auto* row : rows_) {
            if (row != rows_.front()) painter.fillRect(1, row->y(), width() - 2, 1, tokens.hairline);
        }
    }

private:
    const Look& look_;
    const std::vector<SuggestionRowWidget*>& rows_;
};

SuggestionCard::SuggestionCard(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      heading_(new ElidedLabel(look, TextRole::section, &Tokens::text)),
      ground_(new Ground(look, rows_)),
      list_(new QVBoxLayout(ground_)),
      footer_(new ParagraphLabel(look, TextRole::caption, &Tokens::text2)) {
    list_->setContentsMargins(0, 0, 0, 0);
    list_->setSpacing(0);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Sizes::gap);
    column->addWidget(heading_);
    column->addWidget(ground_);
    column->addWidget(footer_);
}

void SuggestionCard::show(const SuggestionSection& section) {
    heading_->setText(qtText(section.heading));
    footer_->setText(qtText(section.footer));
    std::vector<SuggestionRowWidget*> next;
    next.reserve(section.rows.size());
    for (const auto& row : section.rows) next.push_back(rowOf(row));
    for (auto* gone : rows_) {
        if (std::ranges::find(next, gone) == next.end()) delete gone;
    }
    rows_ = std::move(next);
    for (std::size_t place = 0; place < rows_.size(); ++place) {
        list_->removeWidget(rows_[place]);
        list_->insertWidget(static_cast<int>(place), rows_[place]);
        rows_[place]->show(section.rows[place]);
        rows_[place]->show();
    }
    ground_->update();
}

SuggestionRowWidget* SuggestionCard::rowOf(const SuggestionRow& row) {
    const auto known = std::ranges::find_if(
        rows_, [&](const SuggestionRowWidget* each) { return each->row().suggestion.id == row.suggestion.id; });
    if (known != rows_.end()) return *known;
    auto* made = new SuggestionRowWidget(look_, ground_);
    connect(made, &SuggestionRowWidget::wanted, this, &SuggestionCard::wanted);
    connect(made, &SuggestionRowWidget::menuOpened, this, &SuggestionCard::menuOpened);
    connect(made, &SuggestionRowWidget::menuClosed, this, &SuggestionCard::menuClosed);
    return made;
}

}  // namespace tolvane::desktop
