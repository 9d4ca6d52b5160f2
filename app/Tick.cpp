#include <utility>

#include "app/AppModelPrivate.h"
#include "core/history/HistoryMath.h"
#include "core/sampling/Priority.h"

namespace tolvane {

/// One pass. The order of the steps is part of what they mean: each reads what the ones before it left in the model.
/// It never asks whether its loop was cancelled, so that a pass under way is finished.
QCoro::Task<> AppModel::Private::tick() {
    auto sampled = co_await sampler->sample(std::exchange(pendingActivations, {}));
    if (!sampled) co_return;
    model.snapshot.set(std::move(*sampled));
    recordHistory();
    recordMoment();
    judgeSwap();
    warnAboutSwap();
    reviewPriorities();
    recordTracks();
    giveAdvice();
    noticeSuggestions();
}

void AppModel::Private::judgeSwap() {
    const auto& now = *model.snapshot;
    const auto growth =
        HistoryMath::swapGrowth(*model.moments, static_cast<std::int64_t>(now.memory.swapUsed), now.date);
    const auto back = HistoryMath::readBack(*model.moments, now.memory.swapIns, now.date);
    model.swapGrowth.set(growth ? std::optional(growth->amount) : std::nullopt);
    model.readBack.set(back ? std::optional(back->amount) : std::nullopt);
    model.memoryTight.set(HistoryMath::isTight(now.memory.pressure, *model.swapGrowth, *model.readBack));
}

void AppModel::Private::reviewPriorities() {
    if (model.lowered->empty()) return;
    const auto review = Priority::review(*model.lowered, model.snapshot->rows);
    model.restorePriority(review.restore);
    auto loans = *model.lowered;
    for (const Pid pid : review.gone) loans.erase(pid);
    model.lowered.set(std::move(loans));
}

void AppModel::Private::applyRules() {}

void AppModel::Private::recordTracks() { advisor.record(model.snapshot->rows, model.snapshot->date); }

}  // namespace tolvane
