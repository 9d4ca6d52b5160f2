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

/// One of the largest lines.
struct PanelLine {
    /// Of an application; none for what has the terminal's symbol.
    std::optional<std::string> appPath;
    std::string title;
    std::string unusedFor;
    std::string memory;

    bool operator==(const PanelLine&) const = default;
};

struct PanelSuggestion {
    std::optional<std::string> appPath;
    std::string title;
    /// What kind of finding it is.
    std::string tag;
    /// Its memory, or what it takes of the processor.
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

/// What the panel under the tray's icon shows at one moment. It only reads the model; its few actions stand at its end.
struct PanelView {
    /// Device-independent pixels.
    static constexpr int width = 340;
    static constexpr int columnWidth = 64;

    static constexpr std::string_view largestTitle = "Largest right now";
    static constexpr std::string_view unusedColumn = "Unused", memoryColumn = "Memory";
    static constexpr std::string_view unusedTooltip = "Unused for";
    /// For what is no application.
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
    /// The first few; the block is left out when there are none.
    std::vector<PanelSuggestion> suggestions;
    /// The button at the suggestions' head.
    std::string showSuggestions;
    /// None while the log is empty.
    std::optional<PanelActivity> lastActivity;
    bool rulesPaused = false;

    bool operator==(const PanelView&) const = default;

    static PanelView of(const AppModel& model, std::string_view locale);
    static std::vector<PanelLine> largestOf(std::vector<TableRow> lines, Date now, std::string_view locale);
    /// The line that takes most of the processor, the first of equals.
    static std::optional<TableRow> busiestOf(const std::vector<TableRow>& lines);
    static std::vector<PanelSuggestion> suggestionsOf(const std::vector<Suggestion>& suggestions,
                                                      std::string_view locale);
    static std::string showSuggestionsLabel(std::size_t count);
    static PanelActivity activityOf(const ActivityEntry& entry, Date now, std::string_view locale);
    static std::string_view tagOf(Suggestion::Kind kind);

    /// Brings the main window up as it is.
    static void openMainWindow(AppModel& model);
    /// Brings it up with the suggestions.
    static void openSuggestions(AppModel& model);
};

}  // namespace tolvane
