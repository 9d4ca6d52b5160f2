#include "app/screens/rules/RunningApps.h"

#include <algorithm>
#include <map>

namespace tolvane {

std::vector<RunningApp> runningApps(const std::vector<ProcRow>& rows, const RowNames& names) {
    std::map<std::string_view, RunningApp> apps;
    for (const auto& row : rows) {
        if (!row.appID || !row.appPath) continue;
        auto& app = apps[row.appID->view()];
        if (app.id.empty()) app = {.id = row.appID->str(), .appPath = row.appPath->str()};
        app.memory += row.sample.footprint;
    }
    std::vector<RunningApp> sorted;
    sorted.reserve(apps.size());
    for (auto& [id, app] : apps) {
        app.name = names.application(app.appPath);
        sorted.push_back(std::move(app));
    }
    std::ranges::stable_sort(sorted, std::ranges::greater(), &RunningApp::memory);
    return sorted;
}

}  // namespace tolvane
