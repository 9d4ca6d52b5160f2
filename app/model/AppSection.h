#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tolvane {

/// The screens of the main window, in the sidebar's order.
enum class AppSection { processes, projects, suggestions, history, stats, rules, activity };

struct AppSectionTraits {
    AppSection section;
    std::string_view rawValue;
    std::string_view title;
    /// Name in the set of line icons.
    std::string_view icon;
    /// Heading of the sidebar group that it stands in.
    std::string_view group;
};

inline constexpr std::array<AppSectionTraits, 7> appSections = {{
    {AppSection::processes, "processes", "Processes", "memorychip", "Now"},
    {AppSection::projects, "projects", "Projects", "folder", "Now"},
    {AppSection::suggestions, "suggestions", "Suggestions", "lightbulb", "Now"},
    {AppSection::history, "history", "History", "clock.arrow.circlepath", "Over Time"},
    {AppSection::stats, "stats", "Stats", "chart.bar", "Over Time"},
    {AppSection::rules, "rules", "Rules", "slider.horizontal.3", "Automation"},
    {AppSection::activity, "activity", "Activity", "list.bullet.rectangle", "Automation"},
}};

constexpr const AppSectionTraits& traits(AppSection section) { return appSections[static_cast<std::size_t>(section)]; }

constexpr std::optional<AppSection> appSectionFromRawValue(std::string_view rawValue) {
    for (const auto& each : appSections) {
        if (each.rawValue == rawValue) return each.section;
    }
    return std::nullopt;
}

}  // namespace tolvane
