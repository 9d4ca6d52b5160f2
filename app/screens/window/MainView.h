#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"

namespace tolvane {

struct SidebarRow {
    AppSection section = AppSection::processes;
    std::string title;
    std::string icon;
    /// May be empty.
    std::string badge;

    bool operator==(const SidebarRow&) const = default;
};

struct SidebarGroup {
    std::string title;
    std::vector<SidebarRow> rows;

    bool operator==(const SidebarGroup&) const = default;
};

/// The texts of the main window around its screens.
struct MainView {
    static constexpr std::string_view title = "Tolvane";
    static constexpr std::string_view importRules = "Import Rules…";
    static constexpr std::string_view exportRules = "Export Rules…";
    /// The menu of the window's commands.
    static constexpr std::string_view menu = "Menu";
    /// The name of the file type in a file panel.
    static constexpr std::string_view ruleFiles = "Tolvane Rules";
    /// Label of the button that closes an import message.
    static constexpr std::string_view dismiss = "OK";

    /// The groups with those sections that have a screen; leaves out empty groups.
    static std::vector<SidebarGroup> sidebar(const AppModel& model, std::span<const AppSection> present);
    static std::vector<SidebarGroup> sidebar(std::span<const AppSection> present, std::size_t enabledRules,
                                             std::size_t visibleSuggestions);

    /// The number of rules that are switched on.
    static std::size_t enabledRules(const std::vector<Rule>& rules);
    /// The number of suggestions that are not hidden at `now`.
    static std::size_t visibleSuggestions(const std::vector<Suggestion>& suggestions,
                                          const std::map<std::string, Date, std::less<>>& hidden, Date now);

    /// True when there is something to export.
    static bool canExport(const std::vector<Rule>& rules) { return !rules.empty(); }
    /// The proposed name of the exported file, without an extension.
    static std::string exportName(const std::vector<Rule>& rules);
};

}  // namespace tolvane
