#include "core/rules/SubjectSearch.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "core/rules/SubjectKey.h"

namespace tolvane {

namespace {

using Apps = std::unordered_map<std::string_view, Subject>;

const AppTarget& targetOf(const SubjectSearch& search) { return std::get<AppTarget>(search.rule->target); }

Apps wantedApps(const std::vector<SubjectSearch*>& searches, const World& world) {
    Apps apps;
    for (const auto* search : searches) {
        const auto& target = targetOf(*search);
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

void findApps(const std::vector<SubjectSearch*>& searches, const World& world) {
    auto apps = wantedApps(searches, world);
    if (apps.empty()) return;
    addRows(apps, world);
    for (auto* search : searches) {
        const auto& target = targetOf(*search);
        const auto app = apps.find(target.appID);
        if (app == apps.end() || app->second.pids.empty()) continue;
        if (!search->fits(app->second.unusedSince, app->second.memory)) continue;
        auto subject = app->second;
        subject.key = SubjectKey::app(target.appID);
        subject.title = target.name;
        search->found.push_back(std::move(subject));
    }
}

}  // namespace tolvane
