#include "desktop/panel/PanelContents.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/panel/Hairline.h"
#include "desktop/parts/Measured.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 16;
constexpr int dividerAir = 11;
constexpr int headGap = 4;

QVBoxLayout* columnOf(QWidget* widget) {
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

ElidedLabel* label(const Look& look, TextRole role, QColor Tokens::* colour, std::string_view text = {}) {
    auto* made = new ElidedLabel(look, role, colour);
    made->setText(qtText(text));
    return made;
}

}  // namespace

PanelContents::PanelContents(const Look& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      memory_(new MemoryBlock(look)),
      cpu_(new CPUBlock(look)),
      largest_(new PanelRows(look, PanelView::columnWidth, PanelView::processIcon, qtText(PanelView::unusedTooltip))),
      showSuggestions_(new LinkButton(look, {})),
      suggestions_(new PanelRows(look, PanelView::columnWidth, PanelView::processIcon)),
      activity_(label(look, TextRole::body, &Tokens::text)),
      activityDate_(label(look, TextRole::small, &Tokens::text2)),
      middle_(new QScrollArea),
      open_(new QPushButton(qtText(PanelView::openLabel))),
      pause_(new QCheckBox(qtText(PanelView::pauseLabel))),
      settings_(new QuietButton(look, PanelView::settingsIcon, qtText(PanelView::settingsLabel))),
      quit_(new QuietButton(look, PanelView::quitIcon, qtText(PanelView::quitLabel))) {
    showSuggestions_->setObjectName(QStringLiteral("showSuggestions"));
    quit_->setObjectName(QStringLiteral("quit"));
    settings_->setObjectName(QStringLiteral("settings"));
    pause_->setObjectName(QStringLiteral("pause"));
    build();
    connectControls();
}

void PanelContents::build() {
    auto* content = new QWidget;
    auto* column = columnOf(content);
    /// Puts the scroll bar into the margin.
    column->setContentsMargins(margin, 0, margin, 0);
    column->addWidget(new Hairline(look_, dividerAir));
    column->addWidget(cpu_);
    column->addWidget(new Hairline(look_, dividerAir));
    for (auto* block : {buildLargest(), suggestionsBlock_ = buildSuggestions(), activityBlock_ = buildActivity()}) {
        column->addWidget(block);
    }
    middle_->setWidget(content);
    middle_->setFrameShape(QFrame::NoFrame);
    middle_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    middle_->setFocusPolicy(Qt::NoFocus);
    middle_->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto* whole = columnOf(this);
    whole->setContentsMargins(0, margin - 1, 0, margin - Sizes::step);
    memory_->layout()->setContentsMargins(margin, 0, margin, 0);
    whole->addWidget(memory_);
    whole->addWidget(middle_);
    whole->addWidget(footer_ = buildFooter());
    footer_->layout()->setContentsMargins(margin, 0, margin, 0);
}

QWidget* PanelContents::buildLargest() {
    auto* block = new QWidget;
    auto* column = columnOf(block);
    auto* head = new QHBoxLayout;
    head->setSpacing(Sizes::gap);
    head->addWidget(label(look_, TextRole::headline, &Tokens::text, PanelView::largestTitle), 1);
    for (const auto title : {PanelView::unusedColumn, PanelView::memoryColumn}) {
        auto* name = label(look_, TextRole::small, &Tokens::text2, title);
        name->setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
        name->setFixedWidth(look_.fonts().scaled(PanelView::columnWidth));
        head->addWidget(name);
    }
    column->addLayout(head);
    column->addSpacing(headGap);
    largest_->setAccessibleName(qtText(PanelView::largestTitle));
    column->addWidget(largest_);
    return block;
}

QWidget* PanelContents::buildSuggestions() {
    auto* block = new QWidget;
    auto* column = columnOf(block);
    column->addWidget(new Hairline(look_, dividerAir));
    auto* head = new QHBoxLayout;
    head->addWidget(label(look_, TextRole::headline, &Tokens::text, PanelView::suggestionsTitle), 1);
    head->addWidget(showSuggestions_);
    column->addLayout(head);
    column->addSpacing(headGap);
    suggestions_->setAccessibleName(qtText(PanelView::suggestionsTitle));
    column->addWidget(suggestions_);
    return block;
}

QWidget* PanelContents::buildActivity() {
    auto* block = new QWidget;
    auto* column = columnOf(block);
    column->addWidget(new Hairline(look_, dividerAir));
    column->addWidget(label(look_, TextRole::caption, &Tokens::text2, PanelView::activityCaption));
    auto* row = new QHBoxLayout;
    row->setSpacing(Sizes::gap);
    row->addWidget(activity_, 1);
    row->addWidget(activityDate_);
    activityDate_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    column->addLayout(row);
    return block;
}

QWidget* PanelContents::buildFooter() {
    auto* block = new QWidget;
    auto* column = columnOf(block);
    column->addWidget(new Hairline(look_, dividerAir));
    auto* first = new QHBoxLayout;
    first->setSpacing(Sizes::wideGap);
    first->addWidget(open_, 1);
    first->addWidget(pause_);
    open_->setProperty("filled", true);
    open_->setAutoDefault(false);
    auto* second = new QHBoxLayout;
    second->setContentsMargins(1, 0, 1, 0);
    second->addWidget(settings_);
    second->addStretch(1);
    second->addWidget(quit_);
    column->addLayout(first);
    column->addSpacing(Sizes::gap);
    column->addLayout(second);
    return block;
}

void PanelContents::connectControls() {
    connect(open_, &QPushButton::clicked, this, &PanelContents::openWanted);
    connect(showSuggestions_, &QAbstractButton::clicked, this, &PanelContents::suggestionsWanted);
    connect(pause_, &QCheckBox::toggled, this, &PanelContents::pauseWanted);
    connect(settings_, &QAbstractButton::clicked, this, &PanelContents::settingsWanted);
    connect(quit_, &QAbstractButton::clicked, this, &PanelContents::quitWanted);
}

void PanelContents::show(const PanelView& panel) {
    memory_->show(panel.memory);
    cpu_->show(panel.cpu);
    showLargest(panel.largest);
    showSuggestions(panel);
    activityBlock_->setVisible(panel.lastActivity.has_value());
    if (panel.lastActivity) {
        activity_->setText(qtText(panel.lastActivity->text));
        activityDate_->setText(qtText(panel.lastActivity->when));
    }
    const QSignalBlocker quiet(pause_);
    pause_->setChecked(panel.rulesPaused);
}

void PanelContents::showLargest(const std::vector<PanelLine>& lines) {
    std::vector<PanelRow> rows;
    rows.reserve(lines.size());
    for (const auto& line : lines) {
        rows.push_back({.appPath = line.appPath,
                        .title = oneLine(qtText(line.title)),
                        .tag = {},
                        .quietFigure = qtText(line.unusedFor),
                        .figure = qtText(line.memory)});
    }
    largest_->show(std::move(rows));
}

void PanelContents::showSuggestions(const PanelView& panel) {
    std::vector<PanelRow> rows;
    rows.reserve(panel.suggestions.size());
    for (const auto& each : panel.suggestions) {
        rows.push_back({.appPath = each.appPath,
                        .title = oneLine(qtText(each.title)),
                        .tag = qtText(each.tag),
                        .quietFigure = {},
                        .figure = qtText(each.figure)});
    }
    suggestions_->show(std::move(rows));
    suggestionsBlock_->setVisible(!panel.suggestions.empty());
    showSuggestions_->setText(qtText(panel.showSuggestions));
    showSuggestions_->setAccessibleName(qtText(panel.showSuggestions));
    showSuggestions_->updateGeometry();
}

/// Blocks wrap their texts, so their height depends on the width.
void PanelContents::fit(int width, int most) {
    setFixedWidth(width);
    auto& content = *middle_->widget();
    const auto margins = layout()->contentsMargins();
    const int fixed = heightAt(*memory_, width) + heightAt(*footer_, width) + margins.top() + margins.bottom();
    const int wanted = heightAt(content, width);
    content.setFixedSize(width, wanted);
    const int middle = std::clamp(most - fixed, 0, wanted);
    middle_->setFixedHeight(middle);
    middle_->setVerticalScrollBarPolicy(middle < wanted ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setFixedHeight(fixed + middle);
}

}  // namespace tolvane::desktop
