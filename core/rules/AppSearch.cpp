#include "core/rules/AppSearch.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "core/rules/SubjectKey.h"

namespace tolvane {

namespace {

using Apps = std::unordered_map<std::string_view, Subject>;

const AppTarget& targetOf(const Ask& ask) { return std::get<AppTarget>(ask.rule->target); }

Apps wantedApps(const std::vector<Ask*>& asks, const World& world) {
    Apps apps;
    for (const auto* ask : asks) {
        const auto& target = targetOf(*ask);
        if (world.frontmostAppID != target.appID) apps.try_emplace(target.appID);
    }
    return apps;
}

void addRow(Subject& app, const ProcRow& row) {
    app.unusedSince = app.pids.empty() ? row.unusedSince : std::max(app.unusedSince, row.unusedSince);
    app.pids.push_back(row.sample.pid);
    app.memory += row.sample.footprint;
    app.compressed += row.sample.compressed;
}

void addRows(Apps& apps, const World& world) {
    for (const auto& row : world.rows) {
        if (!row.appID || !world.mayTouch(row.sample)) continue;
        const auto app = apps.find(row.appID->view());
        if (app != apps.end()) addRow(app->second, row);
    }
}

}  // namespace

void findApps(const std::vector<Ask*>& asks, const World& world) {
    auto apps = wantedApps(asks, world);
    if (apps.empty()) return;
    addRows(apps, world);
    for (auto* ask : asks) {
        const auto& target = targetOf(*ask);
        const auto app = apps.find(target.appID);
        if (app == apps.end() || app->second.pids.empty()) continue;
        if (!ask->fits(app->second.unusedSince, app->second.memory)) continue;
        auto subject = app->second;
        subject.key = SubjectKey::app(target.appID);
        subject.title = target.name;
        ask->found.push_back(std::move(subject));
    }
}

}  // namespace tolvane
