#include "app/screens/ForceQuitQuestion.h"

namespace tolvane::ForceQuitQuestion {

Question of(const std::vector<Line>& lines, std::string_view locale) {
    return {.title = Line::forceQuitQuestion(lines, locale),
            .message = lines.size() == 1 ? "Unsaved work in " + lines.front().title + " will be lost."
                                         : "Unsaved work in any of them will be lost.",
            .action = "Force Quit"};
}

}  // namespace tolvane::ForceQuitQuestion
