#include "desktop/projects/ProjectRowPane.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/projects/ProjectRowShape.h"

namespace tolvane::desktop {

namespace {

constexpr int branchGap = 9, markGap = 12;
constexpr int figuresGap = 4, buttonsGap = 16;
/// Least width of a title and its details at 100 % text.
constexpr int leastTexts = 260;
constexpr int leastTitle = 90;

}  // namespace

ProjectRowPane::ProjectRowPane(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new ElidedLabel(look, TextRole::headline, &Tokens::text, this)),
      branch_(new IconLabel(look, &Tokens::text2, this)),
      mark_(new IconLabel(look, &Tokens::orangeText, this)),
      details_(new ElidedLabel(look, TextRole::small, &Tokens::text2, this)),
      figures_{new NumberColumn(look, QStringLiteral("888.8 MB"), this),
               new NumberColumn(look, QStringLiteral("88.8 cores"), this),
               new NumberColumn(look, QStringLiteral("23h 59m"), this)},
      park_(new QPushButton(qtText(ProjectsView::parkLabel), this)),
      more_(new IconButton(look, "ellipsis", tr("Actions"), this)) {
    details_->setFigures(true);
    park_->setToolTip(qtText(ProjectsView::parkTooltip));
    ProjectRowShape::apply(*park_, look.fonts());
    buildRow();
    connect(park_, &QPushButton::clicked, this, &ProjectRowPane::parkWanted);
    connect(more_, &QToolButton::clicked, this,
            [this] { emit menuWanted(more_->mapToGlobal(more_->rect().bottomLeft())); });
}

/// The branch shrinks first. The title keeps enough to be recognised and to leave the mark readable.
ShrinkingRow* ProjectRowPane::buildFirstLine() {
    auto* line = new ShrinkingRow(this);
    line->add(title_, 0, 1, look_.fonts().scaled(leastTitle));
    line->add(branch_, branchGap, 0);
    line->add(mark_, markGap, 2);
    return line;
}

QWidget* ProjectRowPane::buildFigures() {
    auto* figures = new QWidget(this);
    auto* row = new QHBoxLayout(figures);
    row->setContentsMargins(mirrored(layoutDirection(), {figuresGap, 0, 0, 0}));
    row->setSpacing(0);
    row->addStretch(1);
    for (auto* figure : figures_) row->addWidget(figure);
    figures->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return figures;
}

void ProjectRowPane::buildRow() {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addStretch(1);
    texts->addWidget(buildFirstLine());
    texts->addWidget(details_);
    texts->addStretch(1);
    figuresRow_ = buildFigures();
    middle_ = new QBoxLayout(QBoxLayout::LeftToRight);
    middle_->setSpacing(0);
    middle_->addLayout(texts, 1);
    middle_->addWidget(figuresRow_);
    auto* row = new QHBoxLayout(this);
    ProjectRowShape::apply(*row);
    row->addWidget(new LineIcon(look_, ProjectsView::projectIcon, &Tokens::text2, Sizes::listIcon, this), 0,
                   Qt::AlignVCenter);
    row->addSpacing(ProjectRowShape::iconGap);
    row->addLayout(middle_, 1);
    row->addSpacing(buttonsGap);
    row->addWidget(park_, 0, Qt::AlignVCenter);
    row->addSpacing(ProjectRowShape::menuGap);
    row->addWidget(more_, 0, Qt::AlignVCenter);
}

/// With large text the numbers go below, so that the titles keep their room.
void ProjectRowPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    int others = figuresGap + park_->width() + more_->width() + buttonsGap;
    for (const auto* figure : figures_) others += figure->usualWidth();
    const bool beside = width() - others >= look_.fonts().scaled(leastTexts);
    for (auto* figure : figures_) figure->setTight(!beside);
    middle_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void ProjectRowPane::show(ProjectRow row) {
    row_ = std::move(row);
    const auto title = oneLine(qtText(row_.title));
    title_->setText(title);
    branch_->show(ProjectsView::branchIcon, oneLine(qtText(row_.branch)));
    mark_->show(row_.mark ? row_.mark->icon : std::string_view(), row_.mark ? qtText(row_.mark->text) : QString());
    details_->setText(qtText(row_.detail));
    park_->setEnabled(!row_.isEnding);
    for (std::size_t index = 0; index < figures_.size(); ++index) {
        figures_[index]->show(qtText(row_.figures[index].title), qtText(row_.figures[index].value));
    }
    setAccessibleName(title);
    park_->setAccessibleName(park_->text() + QStringLiteral(": ") + title);
    more_->setAccessibleName(more_->toolTip() + QStringLiteral(": ") + title);
}

void ProjectRowPane::contextMenuEvent(QContextMenuEvent* event) { emit menuWanted(event->globalPos()); }

}  // namespace tolvane::desktop
