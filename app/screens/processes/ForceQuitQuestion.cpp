#include "app/screens/processes/ForceQuitQuestion.h"

#include "app/rows/Format.h"

namespace tolvane::ForceQuitQuestion {

Question of(const std::vector<TableRow>& lines, std::string_view locale) {
    return {.title = TableRow::forceQuitQuestion(lines, locale),
            .message = lines.size() == 1 ? "Unsaved work in " + lines.front().title + " will be lost."
                                         : "Unsaved work in any of them will be lost.",
            .action = "Force Quit"};
}

std::string extent(const std::vector<TableRow>& lines, std::string_view locale) {
    std::size_t count = 0;
    for (const auto& line : lines) count += line.pids.size();
    if (count <= lines.size()) return {};
    return Format::decimal(static_cast<double>(count), 0, 0, locale) + " processes";
}

}  // namespace tolvane::ForceQuitQuestion
