#include "desktop/history/HistoryPage.h"

#include <QStackedLayout>
#include <QVBoxLayout>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/parts/EmptyState.h"

namespace tolvane::desktop {

namespace {

std::vector<QString> rangeLabels() {
    std::vector<QString> labels;
    labels.reserve(historyRanges.size());
    for (const auto& each : historyRanges) labels.push_back(qtText(each.label));
    return labels;
}

}  // namespace

HistoryPage::HistoryPage(AppModel& model, const Look& look, std::string locale, std::string zone, QWidget* parent)
    : Page(parent),
      look_(look),
      view_(model, std::move(locale), std::move(zone)),
      range_(new SegmentedPicker(look, qtText(HistoryView::rangeLabel), rangeLabels(), this)),
      panes_(new QStackedLayout(this)),
      empty_(new EmptyState(look, HistoryView::empty.icon, qtText(HistoryView::empty.title),
                            qtText(HistoryView::empty.sentence))),
      scroll_(new ScrolledColumn(look, Sizes::margin, Sizes::margin)),
      memory_(new MomentChart(look)),
      cpu_(new MomentChart(look)),
      moment_(new MomentPane(look)) {
    empty_->setObjectName(QStringLiteral("empty"));
    cpu_->setObjectName(QStringLiteral("cpu"));
    memory_->setObjectName(QStringLiteral("memory"));
    range_->setObjectName(QStringLiteral("range"));
    range_->setChoice(static_cast<int>(view_.range()));
    range_->hide();
    buildColumn();
    panes_->addWidget(scroll_);
    panes_->addWidget(empty_);
    connectControls();
    follow(model.moments, model.activity);
}

void HistoryPage::buildColumn() {
    auto* blocks = &scroll_->blocks();
    blocks->addWidget(memory_);
    blocks->addWidget(cpu_);
    blocks->addWidget(moment_);
    blocks->addStretch(1);
}

void HistoryPage::connectControls() {
    connect(range_, &SegmentedPicker::chosen, this, [this](int index) {
        view_.setRange(historyRanges[static_cast<std::size_t>(index)].range);
        refresh();
    });
    for (auto* chart : {memory_, cpu_}) {
        connect(chart, &MomentChart::picked, this, [this](Date date) {
            view_.select(date);
            refresh();
        });
        connect(chart, &MomentChart::stepped, this, [this](int places) {
            view_.move(places);
            refresh();
        });
        connect(chart, &MomentChart::cleared, this, [this] {
            view_.select(std::nullopt);
            refresh();
        });
    }
}

void HistoryPage::draw() {
    const auto content = view_.content();
    panes_->setCurrentWidget(content ? static_cast<QWidget*>(scroll_) : empty_);
    if (!content) return;
    const auto spoken = qtText(content->detail.heading) + QStringLiteral(": ") + qtText(content->detail.sentence);
    memory_->show(content->memory, content->times, spoken);
    cpu_->show(content->cpu, content->times, spoken);
    moment_->show(content->detail);
}

/// The range ends now, so it has to be computed again each time the page is shown.
void HistoryPage::showEvent(QShowEvent* event) {
    Page::showEvent(event);
    refresh();
}

}  // namespace tolvane::desktop
