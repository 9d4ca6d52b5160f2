#include "desktop/suggestions/SuggestionRowWidget.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

#include "desktop/look/MenuText.h"
#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int sideMargin = 14, upperMargin = 8;
constexpr int figureGap = 28;
/// Least width of a title and its evidence at 100 % text.
constexpr int leastTexts = 150;
constexpr int mostEvidenceLines = 6;

}  // namespace

SuggestionRowWidget::SuggestionRowWidget(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new ElidedLabel(look, TextRole::body, &Tokens::text)),
      evidence_(new ParagraphLabel(look, TextRole::small, &Tokens::text2)),
      figure_(new ElidedLabel(look, TextRole::body, &Tokens::text)),
      buttons_(new QWidget),
      makeRule_(new QPushButton(qtText(SuggestionMenu::makeRule))),
      action_(new SplitButton(look)) {
    makeRule_->setObjectName(QStringLiteral("makeRule"));
    buildLayout();
    evidence_->setMostLines(mostEvidenceLines);
    makeRule_->setToolTip(qtText(SuggestionMenu::makeRuleHelp));
    makeRule_->setAutoDefault(false);
    makeRule_->setFixedHeight(action_->sizeHint().height());
    connect(makeRule_, &QPushButton::clicked, this, [this] { emit wanted(row_, SuggestionAction::makeRule); });
    connect(action_, &QToolButton::clicked, this, [this] { emit wanted(row_, SuggestionAction::primary); });
    connect(action_, &SplitButton::opening, this, [this](QMenu* menu) {
        emit menuOpened();
        fill(*menu, false);
    });
    connect(action_, &SplitButton::closed, this, &SuggestionRowWidget::menuClosed);
}

void SuggestionRowWidget::buildLayout() {
    title_->setFont(look_.fonts().font(TextRole::body, QFont::Medium));
    figure_->setFigures(true);
    figure_->setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
    const QFontMetrics metrics(look_.fonts().figures(TextRole::body));
    figure_->setFixedWidth(metrics.horizontalAdvance(QStringLiteral("888.8 cores")));

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch(1);
    texts->addWidget(title_);
    texts->addWidget(evidence_);
    texts->addStretch(1);
    auto* buttons = new QHBoxLayout(buttons_);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(Sizes::gap);
    buttons->addStretch(1);
    buttons->addWidget(makeRule_);
    buttons->addWidget(action_);
    auto* means = new QHBoxLayout;
    means->setSpacing(figureGap);
    means->addStretch(1);
    means->addWidget(figure_);
    means->addWidget(buttons_);
    whole_ = new QBoxLayout(QBoxLayout::LeftToRight, this);
    whole_->setContentsMargins(
        mirrored(layoutDirection(), {sideMargin + iconSize() + Sizes::wideGap, upperMargin, sideMargin, upperMargin}));
    whole_->setSpacing(Sizes::wideGap);
    whole_->addLayout(texts, 1);
    whole_->addLayout(means);
}

/// With large text the value and the buttons go below, so that the text keeps its room.
void SuggestionRowWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int icon = iconSize() + Sizes::wideGap;
    const int others = icon + figure_->width() + figureGap + buttonsWidth() + 2 * sideMargin + Sizes::wideGap;
    const bool beside = width() - others >= look_.fonts().scaled(leastTexts);
    whole_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    whole_->setSpacing(beside ? Sizes::wideGap : Sizes::step);
}

void SuggestionRowWidget::show(const SuggestionRow& row) {
    const bool looksTheSame = row_.looksLike(row);
    row_ = row;
    if (looksTheSame) return;
    const auto title = qtText(row.suggestion.title);
    title_->setText(oneLine(title));
    const auto evidence = oneLine(qtText(row.suggestion.evidence));
    evidence_->setText(evidence);
    figure_->setText(qtText(row.figure));
    makeRule_->setVisible(row.suggestion.rule.has_value());
    makeRule_->setAccessibleDescription(title);
    action_->setLabel(qtText(row.primaryLabel));
    action_->setAccessibleDescription(title);
    setAccessibleName(title);
    setAccessibleDescription(evidence);
    update();
}

int SuggestionRowWidget::buttonsWidth() const {
    const int action = action_->sizeHint().width();
    return row_.suggestion.rule ? makeRule_->sizeHint().width() + Sizes::gap + action : action;
}

void SuggestionRowWidget::setButtonsWidth(int width) { buttons_->setFixedWidth(width); }

void SuggestionRowWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect icon(sideMargin, (height() - iconSize()) / 2, iconSize(), iconSize());
    const auto place = QStyle::visualRect(layoutDirection(), rect(), icon);
    if (const auto& appPath = row_.suggestion.appPath) {
        look_.appIcons().paint(painter, *appPath, title_->text(), place);
    } else {
        look_.icons().paint(painter, "terminal", look_.tokens().text2, place);
    }
}

/// An entry's target is fixed when the menu opens.
void SuggestionRowWidget::fill(QMenu& menu, bool includesPrimary) {
    for (const auto& item : SuggestionMenu::items(row_.suggestion, includesPrimary)) {
        if (!item.action) {
            menu.addSeparator();
            continue;
        }
        auto* entry = menu.addAction(menuText(qtText(item.title)));
        connect(entry, &QAction::triggered, this,
                [this, row = row_, action = *item.action] { emit wanted(row, action); });
    }
}

void SuggestionRowWidget::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    emit menuOpened();
    fill(*menu, true);
    connect(menu, &QMenu::aboutToHide, this, [this] { emit menuClosed(); }, Qt::QueuedConnection);
    menu->popup(event->globalPos());
}

}  // namespace tolvane::desktop
