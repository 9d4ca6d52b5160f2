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
    /// Empty for none.
    std::string badge;

    bool operator==(const SidebarRow&) const = default;
};

struct SidebarGroup {
    std::string title;
    std::vector<SidebarRow> rows;

    bool operator==(const SidebarGroup&) const = default;
};

/// The shell of the main window.
struct MainView {
    static constexpr std::string_view title = "Tolvane";
    static constexpr std::string_view importRules = "Import Rules…";
    static constexpr std::string_view exportRules = "Export Rules…";
    /// Of the commands of the window.
    static constexpr std::string_view menu = "Menu";
    /// What a file panel calls the files that it shows.
    static constexpr std::string_view ruleFiles = "Tolvane Rules";
    /// Closes the message of an import.
    static constexpr std::string_view dismiss = "OK";

    /// The groups with the sections whose screens there are; a group without any is left out.
    static std::vector<SidebarGroup> sidebar(const AppModel& model, std::span<const AppSection> present);
    static std::vector<SidebarGroup> sidebar(std::span<const AppSection> present, std::size_t enabledRules,
                                             std::size_t visibleSuggestions);

    /// Rules that are switched on.
    static std::size_t enabledRules(const std::vector<Rule>& rules);
    /// Suggestions that nobody has hidden until after `now`.
    static std::size_t visibleSuggestions(const std::vector<Suggestion>& suggestions,
                                          const std::map<std::string, Date, std::less<>>& hidden, Date now);

    /// There is something to export.
    static bool canExport(const std::vector<Rule>& rules) { return !rules.empty(); }
    /// Proposed name of the exported file, without an extension.
    static std::string exportName(const std::vector<Rule>& rules);
};

}  // namespace tolvane
