#include "app/acts/Outcome.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/LowerCase.h"

namespace tolvane {

namespace {

struct Row {
    Deed deed;
    /// Of the notification's title, before and after the subject's.
    std::string_view before;
    std::string_view after;
    /// Empty where the word depends on what was done.
    std::string_view word;
    bool tellsWord = false;
    bool freesAll = false;
};

constexpr std::array rows = {
    Row{.deed = Deed::onlyLogged, .before = "", .after = " is over its limit", .word = ""},
    Row{.deed = Deed::notified, .before = "", .after = " is over its limit", .word = "Notified"},
    Row{.deed = Deed::terminated, .before = "Stopped ", .after = "", .word = "Terminated", .freesAll = true},
    Row{.deed = Deed::stillRunning,
        .before = "Could not stop ",
        .after = "",
        .word = "Still running",
        .tellsWord = true},
    Row{.deed = Deed::notRunning, .before = "", .after = " was not running", .word = "Not running", .tellsWord = true},
    Row{.deed = Deed::quit, .before = "Quit ", .after = "", .word = "Quit", .freesAll = true},
    Row{.deed = Deed::askedToQuit, .before = "Asked ", .after = " to quit", .word = "Asked to quit"},
    Row{.deed = Deed::relaunched, .before = "Restarted ", .after = "", .word = Outcome::relaunchedWord},
    Row{.deed = Deed::notRelaunched, .before = "Could not restart ", .after = "", .word = "", .tellsWord = true},
    Row{.deed = Deed::lowered, .before = "Lowered the priority of ", .after = "", .word = "Lowered priority"},
    Row{.deed = Deed::notLowered,
        .before = "Could not lower the priority of ",
        .after = "",
        .word = "Priority unchanged",
        .tellsWord = true},
};

}  // namespace

Outcome Outcome::of(Deed deed, std::string_view subject) {
    const auto& row = *std::ranges::find(rows, deed, &Row::deed);
    return {.deed = deed,
            .word = std::string(row.word),
            .title = std::string(row.before) + std::string(subject) + std::string(row.after),
            .tellsWord = row.tellsWord,
            .freesAll = row.freesAll};
}

Outcome Outcome::ofLogging(RuleAction action, std::string_view subject) {
    auto outcome = of(Deed::onlyLogged, subject);
    outcome.word = "Would " + lowerCased(RuleActions::title(action));
    return outcome;
}

Outcome Outcome::ofRelaunch(std::string answer, std::string_view subject) {
    auto outcome = of(answer == relaunchedWord ? Deed::relaunched : Deed::notRelaunched, subject);
    outcome.word = std::move(answer);
    return outcome;
}

std::string Outcome::body(std::string_view reason) const {
    return tellsWord ? word + ". " + std::string(reason) : std::string(reason);
}

}  // namespace tolvane
