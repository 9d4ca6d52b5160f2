#include <utility>

#include "app/model/AppModelPrivate.h"
#include "app/model/DayMoment.h"

namespace tolvane {

namespace {

constexpr Seconds leastGap{55.0};
constexpr Seconds momentsSpan{86'400.0};

}  // namespace

void AppModel::Private::recordMoment() {
    const auto& now = *model.snapshot;
    const Date last = model.moments->empty() ? distantPast : model.moments->back().date;
    if (now.date - last < leastGap) return;
    auto latest = momentOf(now, names, *model.moments);
    state.moments.update([&](std::vector<Moment>& moments) {
        std::erase_if(moments, [&](const Moment& each) { return now.date - each.date > momentsSpan; });
        moments.push_back(std::move(latest));
    });
    store.append(model.moments->back());
}

}  // namespace tolvane
