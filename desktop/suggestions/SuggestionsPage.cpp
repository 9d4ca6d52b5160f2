#include "desktop/suggestions/SuggestionsPage.h"

#include <QPushButton>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/parts/EmptyState.h"

namespace tolvane::desktop {

namespace {

constexpr int cardGap = 22;

}  // namespace

SuggestionsPage::SuggestionsPage(AppModel& model, const Look& look, std::string locale, QWidget* parent)
    : Page(parent),
      model_(model),
      look_(look),
      notice_(new NoticeBar(look)),
      view_(model, std::move(locale), [this](const Outcome& outcome) { notice_->tell(qtText(outcome.sentence())); }),
      showHidden_(new QPushButton(look.icons().get(SuggestionsView::showHiddenIcon),
                                  qtText(SuggestionsView::showHiddenLabel), this)),
      panes_(new QStackedLayout),
      empty_(new EmptyState(look, SuggestionsView::empty.icon, qtText(SuggestionsView::empty.title),
                            qtText(SuggestionsView::empty.sentence))),
      scroll_(new ScrolledColumn(look, Sizes::margin - Sizes::step, cardGap)) {
    empty_->setObjectName(QStringLiteral("empty"));
    notice_->setObjectName(QStringLiteral("notice"));
    showHidden_->setObjectName(QStringLiteral("showHidden"));
    showHidden_->setToolTip(qtText(SuggestionsView::showHiddenHelp));
    const int icon = look.fonts().scaled(Sizes::icon);
    showHidden_->setIconSize({icon, icon});
    showHidden_->setAutoDefault(false);
    showHidden_->hide();
    connect(showHidden_, &QPushButton::clicked, this, [this] { view_.showHidden(); });
    buildColumn();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(notice_);
    column->addLayout(panes_, 1);
    // Added late: a shown pane without a parent would open as a window of its own.
    panes_->addWidget(scroll_);
    panes_->addWidget(empty_);
    // Snoozes expire when a sample is taken, so follow the snapshot too.
    follow(model_.suggestions, model_.hiddenSuggestions, model_.snapshot);
}

std::vector<QWidget*> SuggestionsPage::controls() { return {showHidden_}; }

/// The first suggestion's button, or the button that shows hidden suggestions.
QWidget* SuggestionsPage::firstFocus() {
    const auto shown = cards();
    if (shown.empty()) return showHidden_;
    return &shown.front()->rows().front()->actionButton();
}

void SuggestionsPage::buildColumn() {
    column_ = &scroll_->blocks();
    for (const auto& kind : suggestionKinds) column_->addWidget(card(kind.kind));
    column_->addStretch(1);
}

SuggestionCard* SuggestionsPage::card(Suggestion::Kind kind) {
    auto*& card = cards_[kind];
    if (card) return card;
    card = new SuggestionCard(look_);
    card->hide();
    connect(card, &SuggestionCard::wanted, this, [this](const SuggestionRow& row, SuggestionAction action) {
        notice_->hide();
        view_.carryOut(row, action);
    });
    connect(card, &SuggestionCard::menuOpened, this, [this] { hold(true); });
    connect(card, &SuggestionCard::menuClosed, this, [this] { hold(false); });
    return card;
}

void SuggestionsPage::hold(bool held) {
    held_ = held;
    if (!held) refreshLater();
}

void SuggestionsPage::draw() {
    if (held_) return;
    const auto sections = view_.sections();
    showHidden_->setEnabled(view_.canShowHidden());
    panes_->setCurrentWidget(sections.empty() ? empty_ : static_cast<QWidget*>(scroll_));
    showSections(sections);
    if (auto subtitle = qtText(view_.subtitle()); subtitle != subtitle_) {
        subtitle_ = std::move(subtitle);
        emit subtitleChanged();
    }
}

void SuggestionsPage::showSections(const std::vector<SuggestionSection>& sections) {
    for (const auto& [kind, card] : cards_) {
        const auto section = std::ranges::find(sections, kind, &SuggestionSection::kind);
        if (section != sections.end()) {
            card->show(*section);
        } else {
            card->show(SuggestionSection{.kind = kind, .heading = {}, .footer = {}, .rows = {}});
        }
        card->setVisible(section != sections.end());
    }
    alignFigures();
}

void SuggestionsPage::alignFigures() const {
    int widest = 0;
    const auto shown = cards();
    for (const auto* card : shown) {
        for (const auto* row : card->rows()) widest = std::max(widest, row->buttonsWidth());
    }
    for (const auto* card : shown) {
        for (auto* row : card->rows()) row->setButtonsWidth(widest);
    }
}

std::vector<SuggestionCard*> SuggestionsPage::cards() const {
    std::vector<SuggestionCard*> shown;
    for (const auto& kind : suggestionKinds) {
        auto* card = cards_.at(kind.kind);
        if (!card->rows().empty()) shown.push_back(card);
    }
    return shown;
}

void SuggestionsPage::showEvent(QShowEvent* event) {
    Page::showEvent(event);
    refresh();
}

}  // namespace tolvane::desktop
