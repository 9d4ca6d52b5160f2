#include "app/screens/processes/ForceQuitQuestion.h"

#include "app/rows/Format.h"

namespace tolvane::ForceQuitQuestion {

Question of(const std::vector<TableRow>& rows, std::string_view locale) {
    return {.title = TableRow::forceQuitQuestion(rows, locale),
            .message = rows.size() == 1 ? "Unsaved work in " + rows.front().title + " will be lost."
                                        : "Unsaved work in any of them will be lost.",
            .action = "Force Quit"};
}

std::string extent(const std::vector<TableRow>& rows, std::string_view locale) {
    std::size_t count = 0;
    for (const auto& row : rows) count += row.pids.size();
    if (count <= rows.size()) return {};
    return Format::decimal(static_cast<double>(count), 0, 0, locale) + " processes";
}

}  // namespace tolvane::ForceQuitQuestion
