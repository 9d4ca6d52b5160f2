#include "desktop/stats/StatsPage.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/look/Tip.h"
#include "desktop/parts/EmptyState.h"
#include "desktop/parts/Measured.h"

namespace tolvane::desktop {

namespace {

constexpr int widestColumn = 900;

std::vector<QString> periodLabels() {
    std::vector<QString> labels;
    labels.reserve(statsPeriods.size());
    for (const auto& each : statsPeriods) labels.push_back(qtText(each.label));
    return labels;
}

QVBoxLayout* block(QWidget* widget) {
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

ParagraphLabel* paragraph(const Look& look, TextRole role, QColor Tokens::* colour, std::string_view text = {}) {
    auto* label = new ParagraphLabel(look, role, colour);
    label->setText(qtText(text));
    return label;
}

}  // namespace

StatsPage::StatsPage(AppModel& model, const Look& look, std::string locale, std::string zone, QWidget* parent)
    : Page(parent),
      look_(look),
      view_(model, std::move(locale), std::move(zone)),
      period_(new SegmentedPicker(look, qtText(StatsView::periodLabel), periodLabels(), this)),
      panes_(new QStackedLayout(this)),
      empty_(new EmptyState(look, StatsView::empty.icon, qtText(StatsView::empty.title),
                            qtText(StatsView::empty.sentence))),
      scroll_(new QScrollArea),
      headline_(paragraph(look, TextRole::body, &Tokens::text2)),
      freed_(new ElidedLabel(look, TextRole::display, &Tokens::text)),
      remark_(paragraph(look, TextRole::body, &Tokens::text2)),
      eachRuleBars_(new RuleBars(look, &Tokens::used)),
      chart_(new DayChart(look)),
      wouldBars_(new RuleBars(look, &Tokens::efficiency)),
      showRule_(new QPushButton) {
    empty_->setObjectName(QStringLiteral("empty"));
    showRule_->setObjectName(QStringLiteral("showRule"));
    chart_->setObjectName(QStringLiteral("days"));
    period_->setObjectName(QStringLiteral("period"));
    period_->setChoice(static_cast<int>(view_.period()));
    period_->hide();
    buildColumn();
    panes_->addWidget(scroll_);
    panes_->addWidget(empty_);
    connectControls();
    connectModel(model);
}

void StatsPage::buildColumn() {
    auto* content = new QWidget;
    auto* centre = new QHBoxLayout(content);
    centre->setContentsMargins(Sizes::margin, Sizes::margin - 4, Sizes::margin, Sizes::margin);
    auto* column = new QWidget;
    column->setMaximumWidth(look_.fonts().scaled(widestColumn));
    centre->addWidget(column, 1);
    centre->addStretch(0);
    auto* blocks = block(column);
    blocks->addWidget(headline_);
    blocks->addWidget(freed_);
    blocks->addWidget(remark_);
    for (auto* each : {eachRule_ = buildEachRule(), buildChart(), would_ = buildWould()}) blocks->addWidget(each);
    blocks->addStretch(1);
    scroll_->setWidget(content);
    scroll_->viewport()->installEventFilter(this);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

QWidget* StatsPage::buildEachRule() {
    auto* widget = new QWidget;
    auto* column = block(widget);
    column->setContentsMargins(0, Sizes::margin - Sizes::step, 0, 0);
    column->addWidget(paragraph(look_, TextRole::section, &Tokens::text, StatsView::eachRuleTitle));
    column->addSpacing(Sizes::step);
    eachRuleBars_->setAccessibleName(qtText(StatsView::eachRuleTitle));
    column->addWidget(eachRuleBars_);
    column->addSpacing(Sizes::step);
    column->addWidget(paragraph(look_, TextRole::caption, &Tokens::text2, StatsView::eachRuleRemark));
    return widget;
}

QWidget* StatsPage::buildChart() {
    auto* widget = new QWidget;
    auto* column = block(widget);
    column->setContentsMargins(0, Sizes::margin, 0, 0);
    column->addWidget(chartTitle_ = paragraph(look_, TextRole::section, &Tokens::text, StatsView::chartTitle));
    column->addWidget(chart_);
    return widget;
}

QWidget* StatsPage::buildWould() {
    auto* widget = new QWidget;
    auto* column = block(widget);
    column->setContentsMargins(0, Sizes::margin - Sizes::step, 0, 0);
    auto* head = new QHBoxLayout;
    head->addWidget(paragraph(look_, TextRole::section, &Tokens::text, StatsView::wouldTitle), 1, Qt::AlignVCenter);
    head->addWidget(showRule_);
    showRule_->setAutoDefault(false);
    wouldBars_->setAccessibleName(qtText(StatsView::wouldTitle));
    column->addLayout(head);
    column->addSpacing(Sizes::step);
    column->addWidget(wouldBars_);
    column->addSpacing(Sizes::step);
    column->addWidget(paragraph(look_, TextRole::caption, &Tokens::text2, StatsView::wouldRemark));
    return widget;
}

void StatsPage::connectControls() {
    connect(period_, &SegmentedPicker::chosen, this, [this](int index) {
        view_.setPeriod(statsPeriods[static_cast<std::size_t>(index)].period);
        refresh();
    });
    connect(chart_, &DayChart::dayChosen, this, [this](std::optional<Date> day) {
        view_.selectDay(day);
        showContent(shown_);
    });
    connect(showRule_, &QPushButton::clicked, this, [this] {
        if (const auto& would = shown_.wouldHaveFreed; would && would->rule) view_.show(*would->rule);
    });
}

void StatsPage::connectModel(AppModel& model) {
    follow(model.activity, model.rules);
    newDay_ = model.snapshot.onChange([this] {
        if (shownDay_ != view_.today()) refreshLater();
    });
}

void StatsPage::draw() {
    shownDay_ = view_.today();
    panes_->setCurrentWidget(view_.isEmpty() ? empty_ : scroll_);
    if (!view_.isEmpty()) showContent(view_.content());
}

void StatsPage::showContent(const StatsContent& content) {
    if (&content != &shown_) shown_ = content;
    headline_->setText(qtText(shown_.headline));
    freed_->setText(qtText(shown_.freed));
    remark_->setText(qtText(shown_.remark));
    eachRuleBars_->show(shown_.eachRule);
    eachRule_->setVisible(!shown_.eachRule.empty());
    chart_->show(qtText(StatsView::chartTitle), shown_.days, shown_.ticks, view_.selectedDay());
    showWould(shown_.wouldHaveFreed);
    fit();
}

void StatsPage::showWould(const std::optional<WouldHaveFreed>& would) {
    would_->setVisible(would.has_value());
    if (!would) return;
    wouldBars_->show(would->bars);
    const auto label = qtText(would->showRule);
    constexpr int most = 320;
    const QFontMetrics metrics(look_.fonts().font(TextRole::body));
    showRule_->setText(
        metrics.elidedText(label, Qt::ElideRight, look_.fonts().scaled(most)).replace('&', QStringLiteral("&&")));
    showRule_->setAccessibleName(label);
    showRule_->setToolTip(showRule_->text() == label ? QString() : tip(label));
    showRule_->setVisible(would->rule.has_value());
}

/// Sets the height that the texts need at the current width; QScrollArea does not ask for it.
void StatsPage::fit() {
    const auto room = scroll_->viewport()->size();
    const auto title = qtText(StatsView::chartTitle);
    const int wanted = QFontMetrics(look_.fonts().font(TextRole::section)).horizontalAdvance(title);
    const bool isWhole = wanted <= room.width() - 2 * Sizes::margin;
    chartTitle_->setText(isWhole ? title : qtText(StatsView::chartShortTitle));
    auto* content = scroll_->widget();
    content->setFixedSize(room.width(), std::max(heightAt(*content, room.width()), room.height()));
}

bool StatsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == scroll_->viewport()) fit();
    return Page::eventFilter(watched, event);
}

void StatsPage::showEvent(QShowEvent* event) {
    Page::showEvent(event);
    if (shownDay_ != view_.today()) refresh();
}

}  // namespace tolvane::desktop
