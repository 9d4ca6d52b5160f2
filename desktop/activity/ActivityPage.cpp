#include "desktop/activity/ActivityPage.h"

#include <QPushButton>
#include <QStackedLayout>
#include <utility>

#include "desktop/look/QtText.h"
#include "desktop/parts/EmptyState.h"
#include "desktop/parts/QuestionDialog.h"

namespace tolvane::desktop {

namespace {

const auto columnsKey = QStringLiteral("activity/columns");

std::vector<QString> filterLabels() {
    std::vector<QString> labels;
    labels.reserve(activityFilters.size());
    for (const auto& each : activityFilters) labels.push_back(qtText(each.label));
    return labels;
}

}  // namespace

ActivityPage::ActivityPage(AppModel& model, const Look& look, WindowState& state, std::string locale, std::string zone,
                           QWidget* parent)
    : Page(parent),
      look_(look),
      state_(state),
      view_(model, std::move(locale), std::move(zone)),
      filter_(new SegmentedPicker(look, qtText(ActivityView::filterLabel), filterLabels(), this)),
      clear_(new QPushButton(qtText(ActivityView::clearLabel), this)),
      table_(new ActivityTable(look, view_)),
      panes_(new QStackedLayout(this)) {
    filter_->setObjectName(QStringLiteral("filter"));
    clear_->setObjectName(QStringLiteral("clear"));
    panes_->addWidget(table_);
    for (const auto& each : activityFilters) {
        auto* empty = new EmptyState(look, each.empty.icon, qtText(each.empty.title), qtText(each.empty.sentence));
        empty_.push_back(empty);
        panes_->addWidget(empty);
    }
    filter_->setChoice(static_cast<int>(view_.filter()));
    clear_->setAutoDefault(false);
    for (auto* control : controls()) control->hide();
    table_->setColumnWidths(state_.text(columnsKey));
    connectControls();
    log_ = model.activity.onChange([this] { refresh(); });
    refresh();
}

std::vector<QWidget*> ActivityPage::controls() { return {filter_, clear_}; }

void ActivityPage::connectControls() {
    connect(filter_, &SegmentedPicker::chosen, this, [this](int index) {
        view_.setFilter(activityFilters[static_cast<std::size_t>(index)].filter);
        refresh();
    });
    connect(clear_, &QPushButton::clicked, this, &ActivityPage::askToClear);
    connect(table_, &ActivityTable::columnWidthsChanged, this,
            [this] { state_.set(columnsKey, table_->columnWidths()); });
}

/// Also runs while the page is hidden: rows are places in the log, and the log has changed.
void ActivityPage::draw() {
    table_->activityModel().refresh();
    clear_->setEnabled(view_.canClear());
    const auto filter = static_cast<std::size_t>(view_.filter());
    panes_->setCurrentWidget(table_->activityModel().rowCount() > 0 ? static_cast<QWidget*>(table_) : empty_[filter]);
}

void ActivityPage::askToClear() {
    view_.askToClear();
    const auto question = view_.clearQuestion();
    if (!question) return;
    auto* dialog = QuestionDialog::ask(look_, *question, window());
    connect(dialog, &QDialog::accepted, this, [this] { view_.confirmClear(); });
    connect(dialog, &QDialog::rejected, this, [this] { view_.cancelClear(); });
}

}  // namespace tolvane::desktop
