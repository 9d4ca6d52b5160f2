#include "app/AppNames.h"

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

const std::string& AppNames::of(std::string_view bundlePath) {
    const auto known = names_.find(bundlePath);
    if (known != names_.end()) return known->second;
    auto name = withoutAppSuffix(applications_.displayName(bundlePath));
    return names_.emplace(bundlePath, std::move(name)).first->second;
}

LineNames AppNames::lineNames(Applications& applications, std::string home) {
    auto names = std::make_shared<AppNames>(applications);
    return {.application = [names](std::string_view path) { return names->of(path); }, .home = std::move(home)};
}

}  // namespace tolvane
