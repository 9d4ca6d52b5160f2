#include "app/screens/history/MomentDetail.h"

#include <algorithm>
#include <utility>

#include "app/rows/Format.h"
#include "app/screens/MemorySummary.h"
#include "core/history/HistoryMath.h"
#include "core/words/DateWords.h"
#include "core/words/Words.h"

namespace tolvane {

namespace {

constexpr std::size_t rowsListed = 5;
constexpr Seconds leastAge{600};
constexpr Seconds rulesBefore{900};
constexpr Seconds rulesAfter{60};

HolderRow rowOf(const Holder& holder, std::string figure) {
    return {.title = holder.title.str(),
            .appPath = holder.appPath ? std::optional(holder.appPath->str()) : std::nullopt,
            .figure = std::move(figure)};
}

std::string headingOf(const MomentDetail::Scene& scene) {
    const Date date = scene.moment.date;
    if (scene.isLatest) return "Latest, " + DateWords::time(date, scene.locale, scene.zone);
    return DateWords::weekdayAndTime(date, scene.locale, scene.zone);
}

std::string pressureOf(const Moment& moment) {
    const auto pressure =
        pressureFromLevel(static_cast<int>(std::clamp<std::int64_t>(moment.pressure, 0, 5))).value_or(Pressure::normal);
    return pressure == Pressure::normal ? std::string() : ", pressure " + std::string(levelText(pressure));
}

std::string sentenceOf(const Moment& moment, std::string_view locale) {
    auto text = Format::bytes(moment.used, locale) + " of " + Format::bytes(moment.total, locale) + " used, " +
                Format::bytes(moment.swapUsed, locale) + " in swap, " + Words::percent(moment.cpu, locale) + " busy";
    if (moment.performance && moment.efficiency) {
        text += " (" + Format::decimal(*moment.efficiency, 0, 1, locale) + " on efficiency cores)";
    }
    return text + pressureOf(moment) + ".";
}

HolderList largestOf(const Moment& moment, std::string_view locale) {
    std::vector<const Holder*> holders;
    for (const auto& holder : moment.holders) holders.push_back(&holder);
    std::ranges::stable_sort(holders, std::ranges::greater{}, [](const Holder* each) { return each->memory; });
    if (holders.size() > rowsListed) holders.resize(rowsListed);
    HolderList list{.title = "Largest then", .rows = {}, .empty = "Nothing recorded."};
    for (const auto* holder : holders) list.rows.push_back(rowOf(*holder, Format::bytes(holder->memory, locale)));
    return list;
}

/// The moment nearest to a quarter of an hour before.
const Moment* momentBefore(const Moment& moment, const std::vector<Moment>& all) {
    const Moment* nearest = nullptr;
    const auto distance = [&](const Moment& each) {
        return std::chrono::abs(moment.date - each.date - HistoryMath::window);
    };
    for (const auto& each : all) {
        if (moment.date - each.date < leastAge) continue;
        if (!nearest || distance(each) < distance(*nearest)) nearest = &each;
    }
    return nearest;
}

HolderList grownOf(const MomentDetail::Scene& scene) {
    HolderList list{.title = "Grew most in the 15 minutes before", .rows = {}, .empty = {}};
    const auto* before = momentBefore(scene.moment, scene.all);
    if (!before) {
        list.empty = "Not enough history before this moment.";
        return list;
    }
    list.empty = "Nothing grew by 50 MB or more.";
    for (const auto& each : HistoryMath::grewMost(*before, scene.moment, &Holder::memory, rowsListed)) {
        list.rows.push_back(rowOf(each.holder, "+" + Format::bytes(each.amount, scene.locale)));
    }
    return list;
}

std::vector<RuleActRow> actsOf(const MomentDetail::Scene& scene) {
    std::vector<RuleActRow> rows;
    for (const auto& entry : scene.activity) {
        const Seconds after = entry.date - scene.moment.date;
        if (after <= -rulesBefore || after > rulesAfter) continue;
        rows.push_back({.text = entry.outcome.str() + ": " + entry.subject.str(),
                        .time = DateWords::time(entry.date, scene.locale, scene.zone)});
    }
    return rows;
}

}  // namespace

MomentDetail MomentDetail::of(const Scene& scene) {
    return {.heading = headingOf(scene),
            .sentence = sentenceOf(scene.moment, scene.locale),
            .hint = scene.isLatest ? "" : "Click the charts to pick another moment.",
            .largest = largestOf(scene.moment, scene.locale),
            .grew = grownOf(scene),
            .rules = actsOf(scene)};
}

}  // namespace tolvane
