#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/rows/TableRow.h"
#include "app/screens/CPUSummary.h"
#include "app/screens/MemorySummary.h"
#include "core/sampling/CPULoad.h"

namespace tolvane {

/// One of the largest rows.
struct PanelLine {
    /// Set for an application; other rows show the terminal icon.
    std::optional<std::string> appPath;
    std::string title;
    std::string unusedFor;
    std::string memory;

    bool operator==(const PanelLine&) const = default;
};

struct PanelSuggestion {
    std::optional<std::string> appPath;
    std::string title;
    /// The kind of suggestion.
    std::string tag;
    /// Its memory, or its CPU load.
    std::string figure;

    bool operator==(const PanelSuggestion&) const = default;
};

struct PanelActivity {
    /// "Terminated: node"
    std::string text;
    /// "9 minutes ago"
    std::string when;

    bool operator==(const PanelActivity&) const = default;
};

/// What the panel under the tray icon shows at one moment. It only reads the model; its few actions are at the end.
struct PanelView {
    /// Device-independent pixels.
    static constexpr int width = 340;
    static constexpr int columnWidth = 64;

    static constexpr std::string_view largestTitle = "Largest right now";
    static constexpr std::string_view unusedColumn = "Unused", memoryColumn = "Memory";
    static constexpr std::string_view unusedTooltip = "Unused for";
    /// Icon of rows that are not applications.
    static constexpr std::string_view processIcon = "terminal";
    static constexpr std::string_view suggestionsTitle = "Suggestions";
    static constexpr std::string_view activityCaption = "Last rule activity";
    static constexpr std::string_view openLabel = "Open Tolvane";
    static constexpr std::string_view pauseLabel = "Pause rules";
    static constexpr std::string_view settingsLabel = "Settings", settingsIcon = "gearshape";
    static constexpr std::string_view quitLabel = "Quit Tolvane", quitIcon = "power";

    MemorySummary memory;
    CPUSummary cpu;
    std::vector<PanelLine> largest;
    /// The first few; when empty, the panel leaves the block out.
    std::vector<PanelSuggestion> suggestions;
    /// Label of the button above the suggestions.
    std::string showSuggestions;
    /// nullopt while the log is empty.
    std::optional<PanelActivity> lastActivity;
    bool rulesPaused = false;

    bool operator==(const PanelView&) const = default;

    static PanelView of(const AppModel& model, std::string_view locale);
    static std::vector<PanelLine> largestOf(std::vector<TableRow> lines, Date now, std::string_view locale);
    /// The row with the highest CPU load, the first one of a tie.
    static std::optional<TableRow> busiestOf(const std::vector<TableRow>& lines);
    static std::vector<PanelSuggestion> suggestionsOf(const std::vector<Suggestion>& suggestions,
                                                      std::string_view locale);
    static std::string showSuggestionsLabel(std::size_t count);
    static PanelActivity activityOf(const ActivityEntry& entry, Date now, std::string_view locale);
    static std::string_view tagOf(Suggestion::Kind kind);

    /// Opens the main window as it was.
    static void openMainWindow(AppModel& model);
    /// Opens the main window with the suggestions.
    static void openSuggestions(AppModel& model);
};

}  // namespace tolvane
