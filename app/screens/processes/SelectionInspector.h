#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/screens/MemorySummary.h"
#include "app/screens/processes/InspectorContent.h"

namespace tolvane {

/// What the inspector shows about several rows.
struct SelectionInspector {
    /// "3 selected"
    std::string title;
    InspectorButton forceQuit;
    std::vector<ValueRow> figures;
    /// Each row's title with its memory.
    std::vector<ValueRow> lines;

    bool operator==(const SelectionInspector&) const = default;

    /// A row inside another selected row counts once in the sums.
    static SelectionInspector of(const std::vector<TableRow>& rows, std::string_view locale);
};

}  // namespace tolvane
