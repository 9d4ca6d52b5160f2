#include "app/screens/RunningApps.h"

#include <algorithm>
#include <map>

namespace tolvane {

std::vector<RunningApp> runningApps(const std::vector<ProcRow>& rows, const LineNames& names) {
    std::map<std::string_view, RunningApp> apps;
    for (const auto& row : rows) {
        if (!row.bundleID || !row.appBundlePath) continue;
        auto& app = apps[row.bundleID->view()];
        if (app.id.empty()) app = {.id = row.bundleID->str(), .bundlePath = row.appBundlePath->str()};
        app.memory += row.sample.footprint;
    }
    std::vector<RunningApp> sorted;
    sorted.reserve(apps.size());
    for (auto& [id, app] : apps) {
        app.name = names.application(app.bundlePath);
        sorted.push_back(std::move(app));
    }
    std::ranges::stable_sort(sorted, std::ranges::greater(), &RunningApp::memory);
    return sorted;
}

}  // namespace tolvane
