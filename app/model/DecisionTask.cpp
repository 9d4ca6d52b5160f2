#include <algorithm>
#include <utility>

#include "app/acts/Outcome.h"
#include "app/model/AppModelPrivate.h"
#include "app/preferences/AppPreferences.h"
#include "app/tasks/Sleep.h"
#include "core/sampling/ProcessReader.h"

namespace tolvane {

namespace {

/// By then a restarted application has loaded what it needs.
constexpr Seconds readBackDelay{60};

struct Sizes {
    std::uint64_t footprint = 0;
    std::uint64_t compressed = 0;
};

/// The memory that the application's processes hold now, all instances together.
Sizes sizesOf(const Host& host, const std::string& appPath) {
    const auto inspection = host.makeInspection();
    Sizes sizes;
    for (const auto& sample : ProcessReader(*inspection, false).readAll()) {
        if (host.applications->appPath(sample.pid, sample.path) != Text(appPath)) continue;
        sizes.footprint += sample.footprint;
        sizes.compressed += sample.compressed;
    }
    return sizes;
}

/// Saturating difference: an app that came back larger has freed nothing.
std::uint64_t difference(std::uint64_t before, std::uint64_t after) { return before - std::min(before, after); }

ActivityEntry entryOf(const Decision& decision, const Outcome& outcome, Date date) {
    ActivityEntry entry{.id = UUID::random(),
                        .date = date,
                        .ruleName = decision.rule.name,
                        .subject = decision.title,
                        .outcome = outcome.logText,
                        .memory = decision.memory,
                        .dryRun = decision.dryRun(),
                        .subjectKey = Text(decision.subjectKey),
                        .compressed = decision.compressed};
    if (outcome.freesAll) {
        entry.freed = decision.memory;
        entry.freedCompressed = decision.compressed;
    }
    return entry;
}

}  // namespace

/// The tick starts this task and does not wait for it.
QCoro::Task<> AppModel::Private::carryOut(Decision decision) {
    const auto cancellation = tasks.token();
    const auto outcome = co_await outcomeOf(decision);
    if (outcome.kind == Outcome::Kind::cancelled) co_return;
    const Date date = host.clock->now();
    host.log->info("rules", decision.rule.name + ": " + outcome.logText + " " + decision.title);
    tell(decision, outcome, date);
    auto entry = entryOf(decision, outcome, date);
    if (outcome.relaunchedApp) {
        const auto awoken = co_await Sleep(*host.clock, readBackDelay, Seconds{0}, cancellation);
        if (awoken == Awoken::cancelled) co_return;
        const auto now = sizesOf(host, *outcome.relaunchedApp);
        entry.freed = difference(decision.memory, now.footprint);
        entry.freedCompressed = difference(decision.compressed, now.compressed);
    }
    record(std::move(entry));
}

QCoro::Task<Outcome> AppModel::Private::outcomeOf(const Decision& decision) {
    if (decision.dryRun()) co_return Outcome::ofLogging(decision.action(), decision.title);
    co_return co_await acts.perform(decision.action(), {.title = decision.title, .pids = decision.pids});
}

/// A rule in log-only mode stays quiet, unless notifying is its action.
void AppModel::Private::tell(const Decision& decision, const Outcome& outcome, Date date) {
    if (decision.dryRun() && decision.action() != RuleAction::notify) return;
    if (!AppPreferences::notifyOnAction.in(*host.preferences)) return;
    model.notify(outcome.title, outcome.body(decision.reason(date, host.locale)), AppSection::activity);
}

void AppModel::Private::record(ActivityEntry entry) {
    store.append(entry);
    state.activity.update([&](auto& entries) { entries.insert(entries.begin(), std::move(entry)); });
}

}  // namespace tolvane
