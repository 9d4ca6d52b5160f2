#include "app/screens/processes/InspectorView.h"

#include <utility>

#include "app/sampling/ClockSetBack.h"
#include "app/screens/processes/ForceQuitQuestion.h"

namespace tolvane {

InspectorView::InspectorView(AppModel& model, std::string locale, std::function<void()> changed)
    : model_(model),
      locale_(std::move(locale)),
      home_(model.home()),
      changed_(std::move(changed)),
      reader_(model.portLookup()) {}

void InspectorView::show(TableRow row) {
    const bool another = !row_ || row_->id != row.id || (!row.children && row_->started != row.started);
    row_ = std::move(row);
    if (!another) return;
    confirmForceQuit = false;
    readPorts();
}

void InspectorView::readPorts() {
    ports_.clear();
    if (row_->children || row_->pids.empty()) {
        reader_.forget();
        return;
    }
    reader_.read(row_->pids.front(), [this](std::vector<int> ports) {
        ports_ = std::move(ports);
        if (changed_) changed_();
    });
}

InspectorContent InspectorView::content() const {
    const auto row = row_.value_or(TableRow{});
    const auto history = sinceClockWentBack(model_.historyFor(row.pids));
    return InspectorContent::of(row, {.snapshot = *model_.snapshot,
                                      .history = history,
                                      .lowered = *model_.lowered,
                                      .ports = ports_,
                                      .home = home_,
                                      .actor = {.pid = model_.selfPID(), .uid = model_.uid()},
                                      .locale = locale_});
}

Question InspectorView::forceQuitQuestion() const {
    return ForceQuitQuestion::of({row_.value_or(TableRow{})}, locale_);
}

}  // namespace tolvane
