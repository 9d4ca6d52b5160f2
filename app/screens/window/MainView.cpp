#include "app/screens/window/MainView.h"

#include <algorithm>

namespace tolvane {

namespace {

std::string badgeOf(std::size_t count) { return count > 0 ? std::to_string(count) : std::string(); }

}  // namespace

std::vector<SidebarGroup> MainView::sidebar(const AppModel& model, std::span<const AppSection> present) {
    return sidebar(present, enabledRules(*model.rules),
                   visibleSuggestions(*model.suggestions, *model.hiddenSuggestions, model.snapshot->date));
}

std::vector<SidebarGroup> MainView::sidebar(std::span<const AppSection> present, std::size_t enabledRules,
                                            std::size_t visibleSuggestions) {
    std::vector<SidebarGroup> groups;
    for (const auto& each : appSections) {
        if (std::ranges::find(present, each.section) == present.end()) continue;
        if (groups.empty() || groups.back().title != each.group) groups.push_back({std::string(each.group), {}});
        SidebarRow row{.section = each.section, .title = std::string(each.title), .icon = std::string(each.icon)};
        if (each.section == AppSection::suggestions) row.badge = badgeOf(visibleSuggestions);
        if (each.section == AppSection::rules) row.badge = badgeOf(enabledRules);
        groups.back().rows.push_back(std::move(row));
    }
    return groups;
}

std::size_t MainView::enabledRules(const std::vector<Rule>& rules) {
    return static_cast<std::size_t>(std::ranges::count(rules, true, &Rule::enabled));
}

std::size_t MainView::visibleSuggestions(const std::vector<Suggestion>& suggestions,
                                         const std::map<std::string, Date, std::less<>>& hidden, Date now) {
    return static_cast<std::size_t>(std::ranges::count_if(suggestions, [&](const Suggestion& each) {
        const auto until = hidden.find(each.id);
        return until == hidden.end() || until->second < now;
    }));
}

std::string MainView::exportName(const std::vector<Rule>& rules) {
    return rules.size() == 1 ? rules.front().name : "Tolvane Rules";
}

}  // namespace tolvane
