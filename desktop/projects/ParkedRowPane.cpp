#include "desktop/projects/ParkedRowPane.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/projects/LineIcon.h"
#include "desktop/projects/ProjectRowShape.h"
#include "desktop/projects/ShrinkingRow.h"

namespace tolvane::desktop {

namespace {

constexpr int whenGap = 12;
constexpr int leastTitle = 90;
constexpr int buttonsGap = 16;
/// Height of the first two lines, which the icon and the button are centred on.
constexpr int twoLines = 38;

}  // namespace

ParkedRowPane::ParkedRowPane(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      title_(new ElidedLabel(look, TextRole::headline, &Tokens::text, this)),
      when_(new ElidedLabel(look, TextRole::small, &Tokens::text2, this)),
      commandColumn_(new QVBoxLayout),
      containers_(new ElidedLabel(look, TextRole::small, &Tokens::text2, this)),
      start_(new QPushButton(qtText(ProjectsView::startAgainLabel), this)),
      more_(new IconButton(look, "ellipsis", tr("Actions"), this)) {
    when_->setFigures(true);
    containers_->setFigures(true);
    ProjectRowShape::apply(*start_, look.fonts());
    buildRow();
    connect(start_, &QPushButton::clicked, this, &ParkedRowPane::startWanted);
    connect(more_, &QToolButton::clicked, this,
            [this] { emit menuWanted(more_->mapToGlobal(more_->rect().bottomLeft())); });
}

QVBoxLayout* ParkedRowPane::buildTexts() {
    auto* line = new ShrinkingRow(this);
    line->add(title_, 0, 0, look_.fonts().scaled(leastTitle));
    line->add(when_, whenGap, 1);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(line);
    commandColumn_->setSpacing(1);
    texts->addLayout(commandColumn_);
    texts->addWidget(containers_);
    texts->addStretch(1);
    return texts;
}

void ParkedRowPane::buildRow() {
    auto* icon = new LineIcon(look_, ProjectsView::projectIcon, &Tokens::text2, Sizes::listIcon, this);
    auto* sides = new QHBoxLayout(this);
    ProjectRowShape::apply(*sides);
    const int height = look_.fonts().scaled(twoLines);
    const auto centred = [height](QWidget* part) {
        auto* column = new QVBoxLayout;
        column->addSpacing((height - part->sizeHint().expandedTo(part->minimumSize()).height()) / 2);
        column->addWidget(part);
        column->addStretch(1);
        return column;
    };
    sides->addLayout(centred(icon));
    sides->addSpacing(ProjectRowShape::iconGap);
    sides->addLayout(buildTexts(), 1);
    sides->addSpacing(buttonsGap);
    sides->addLayout(centred(start_));
    sides->addSpacing(ProjectRowShape::menuGap);
    sides->addLayout(centred(more_));
}

void ParkedRowPane::show(ParkedRow row) {
    row_ = std::move(row);
    const auto title = oneLine(qtText(row_.title));
    title_->setText(title);
    when_->setText(qtText(row_.when));
    showCommands();
    containers_->setText(qtText(row_.containers));
    containers_->setVisible(!row_.containers.empty());
    setAccessibleName(title);
    start_->setAccessibleName(start_->text() + QStringLiteral(": ") + title);
    more_->setAccessibleName(more_->toolTip() + QStringLiteral(": ") + title);
}

void ParkedRowPane::showCommands() {
    while (commands_.size() > row_.commands.size()) {
        delete commands_.back();
        commands_.pop_back();
    }
    while (commands_.size() < row_.commands.size()) {
        commands_.push_back(new CopyableLine(look_, this));
        commandColumn_->addWidget(commands_.back());
    }
    for (std::size_t index = 0; index < commands_.size(); ++index) {
        commands_[index]->setWhole(qtText(row_.commands[index]));
    }
}

void ParkedRowPane::contextMenuEvent(QContextMenuEvent* event) { emit menuWanted(event->globalPos()); }

}  // namespace tolvane::desktop
