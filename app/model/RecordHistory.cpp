#include "app/model/AppModelPrivate.h"

namespace tolvane {

namespace {

constexpr Seconds loadHistorySpan{3600.0};

}  // namespace

void AppModel::Private::recordHistory() {
    const auto& now = *model.snapshot;
    state.loadHistory.update([&](std::vector<LoadPoint>& points) {
        std::erase_if(points, [&](const LoadPoint& point) { return now.date - point.date > loadHistorySpan; });
        points.push_back({.date = now.date, .performance = now.cpu.performance, .efficiency = now.cpu.efficiency});
    });
    state.history.update([&](ProcessHistory& history) { history.record(now.rows, now.date); });
}

}  // namespace tolvane
