#include <algorithm>
#include <utility>

#include "app/model/AppModelPrivate.h"
#include "app/tasks/BackgroundCall.h"
#include "core/history/HistoryMath.h"
#include "core/sampling/Priority.h"

namespace tolvane {

namespace {

/// Services rarely come and go, and asking for them reads something of every process.
constexpr Seconds servicesHold{300.0};

}  // namespace

/// One pass. The order of the steps matters: each reads what the earlier ones left in the model. A tick does not check
/// whether its loop was cancelled, so it always runs to its end.
QCoro::Task<> AppModel::Private::tick() {
    auto sampled = co_await sampler->sample(std::exchange(pendingActivations, {}));
    if (!sampled) co_return;
    state.snapshot.set(std::move(*sampled));
    recordHistory();
    recordMoment();
    judgeSwap();
    warnAboutSwap();
    reviewPriorities();
    recordTracks();
    if (!co_await askServiceManager()) co_return;
    giveAdvice();
    noticeSuggestions();
    applyRules();
}

void AppModel::Private::judgeSwap() {
    const auto& now = *model.snapshot;
    const auto growth =
        HistoryMath::swapGrowth(*model.moments, static_cast<std::int64_t>(now.memory.swapUsed), now.date);
    const auto back = HistoryMath::readBack(*model.moments, now.memory.swapIns, now.date);
    state.swapGrowth.set(growth ? std::optional(growth->amount) : std::nullopt);
    state.readBack.set(back ? std::optional(back->amount) : std::nullopt);
    state.memoryTight.set(HistoryMath::isTight(now.memory.pressure, *model.swapGrowth, *model.readBack));
}

void AppModel::Private::reviewPriorities() {
    if (model.lowered->empty()) return;
    auto loans = *model.lowered;
    // After the clock was set back, every use would seem to come before the loan.
    for (auto& [pid, loan] : loans) loan.at = std::min(loan.at, model.snapshot->date);
    state.lowered.set(loans);
    const auto review = Priority::review(loans, model.snapshot->rows);
    acts.restorePriority(review.restore);
    loans = *model.lowered;
    for (const Pid pid : review.gone) loans.erase(pid);
    state.lowered.set(std::move(loans));
}

/// Takes every decision before carrying out the first, so that none sees the effect of another.
void AppModel::Private::applyRules() {
    if (*model.rulesPaused || std::ranges::none_of(*model.rules, &Rule::enabled)) return;
    const World world = model.world();
    auto decisions =
        due.take({.rules = *model.rules, .world = world, .lowered = *model.lowered, .now = model.snapshot->date});
    for (auto& decision : decisions) static_cast<void>(carryOut(std::move(decision)));
}

QCoro::Task<bool> AppModel::Private::askServiceManager() {
    const Date now = model.snapshot->date;
    const Seconds since = now - *model.servicesChecked;
    // A last-checked date in the future means the clock was set back; check again.
    if (since >= Seconds{0} && since < servicesHold) co_return true;
    state.servicesChecked.set(now);
    auto ask = [this] { return host.services->managedPIDs(); };
    auto managed =
        co_await BackgroundCall(background.of(BackgroundJobs::Kind::services), std::move(ask), tasks.token());
    if (!managed) co_return false;
    state.servicePIDs.set(std::move(*managed));
    co_return true;
}

void AppModel::Private::recordTracks() { advisor.record(model.snapshot->rows, model.snapshot->date); }

}  // namespace tolvane
