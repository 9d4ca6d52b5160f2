#include "app/screens/ForceQuitQuestion.h"

namespace tolvane {

ForceQuitQuestion ForceQuitQuestion::of(const std::vector<Line>& lines, std::string_view locale) {
    const auto what = lines.size() == 1 ? lines.front().title : std::string("any of them");
    return {.title = Line::forceQuitQuestion(lines, locale),
            .message = "Unsaved work in " + what + " will be lost.",
            .action = "Force Quit"};
}

}  // namespace tolvane
