#include "app/rows/AppNames.h"

#include <utility>

namespace tolvane {

namespace {

std::string withoutAppSuffix(std::string name) {
    constexpr std::string_view suffix = ".app";
    for (auto at = name.find(suffix); at != std::string::npos; at = name.find(suffix, at)) {
        name.erase(at, suffix.size());
    }
    return name;
}

}  // namespace

const std::string& AppNames::of(std::string_view appPath) {
    const auto known = names_.find(appPath);
    if (known != names_.end()) return known->second;
    auto name = withoutAppSuffix(applications_.displayName(appPath));
    return names_.emplace(appPath, std::move(name)).first->second;
}

RowNames AppNames::rowNames(Applications& applications, std::string home) {
    auto names = std::make_shared<AppNames>(applications);
    return {.application = [names](std::string_view path) { return names->of(path); }, .home = std::move(home)};
}

}  // namespace tolvane
