#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/screens/MemorySummary.h"
#include "app/screens/processes/InspectorContent.h"

namespace tolvane {

/// What the inspector says of several lines.
struct SelectionInspector {
    /// "3 selected"
    std::string title;
    InspectorButton forceQuit;
    std::vector<ValueRow> figures;
    /// Each line's title with its memory.
    std::vector<ValueRow> lines;

    bool operator==(const SelectionInspector&) const = default;

    /// A line that stands within another selected one counts once in the figures.
    static SelectionInspector of(const std::vector<TableRow>& rows, std::string_view locale);
};

}  // namespace tolvane
