#include "app/acts/Outcome.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/LowerCase.h"

namespace tolvane {

namespace {

struct Row {
    Outcome::Kind kind;
    /// The title around the subject.
    std::string_view before;
    std::string_view after;
    /// Empty where it depends on what was done.
    std::string_view logText;
    bool explains = false;
    bool freesAll = false;
};

constexpr std::array rows = {
    Row{.kind = Outcome::Kind::onlyLogged, .before = "", .after = " is over its limit", .logText = ""},
    Row{.kind = Outcome::Kind::notified, .before = "", .after = " is over its limit", .logText = "Notified"},
    Row{.kind = Outcome::Kind::terminated,
        .before = "Stopped ",
        .after = "",
        .logText = "Terminated",
        .freesAll = true},
    Row{.kind = Outcome::Kind::stillRunning,
        .before = "Could not stop ",
        .after = "",
        .logText = "Still running",
        .explains = true},
    Row{.kind = Outcome::Kind::notRunning,
        .before = "",
        .after = " was not running",
        .logText = "Not running",
        .explains = true},
    Row{.kind = Outcome::Kind::quit, .before = "Quit ", .after = "", .logText = "Quit", .freesAll = true},
    Row{.kind = Outcome::Kind::askedToQuit, .before = "Asked ", .after = " to quit", .logText = "Asked to quit"},
    Row{.kind = Outcome::Kind::relaunched, .before = "Restarted ", .after = "", .logText = Outcome::relaunchedText},
    Row{.kind = Outcome::Kind::notRelaunched,
        .before = "Could not restart ",
        .after = "",
        .logText = "",
        .explains = true},
    Row{.kind = Outcome::Kind::lowered,
        .before = "Lowered the priority of ",
        .after = "",
        .logText = "Lowered priority"},
    Row{.kind = Outcome::Kind::notLowered,
        .before = "Could not lower the priority of ",
        .after = "",
        .logText = "Priority unchanged",
        .explains = true},
};

}  // namespace

Outcome Outcome::of(Kind kind, std::string_view subject) {
    const auto& row = *std::ranges::find(rows, kind, &Row::kind);
    return {.kind = kind,
            .logText = std::string(row.logText),
            .title = std::string(row.before) + std::string(subject) + std::string(row.after),
            .explains = row.explains,
            .freesAll = row.freesAll};
}

Outcome Outcome::ofLogging(RuleAction action, std::string_view subject) {
    auto outcome = of(Kind::onlyLogged, subject);
    outcome.logText = "Would " + lowerCased(RuleActions::title(action));
    return outcome;
}

Outcome Outcome::ofRelaunch(std::string answer, std::string_view subject) {
    auto outcome = of(answer == relaunchedText ? Kind::relaunched : Kind::notRelaunched, subject);
    outcome.logText = std::move(answer);
    return outcome;
}

std::string Outcome::body(std::string_view reason) const {
    return explains ? logText + ". " + std::string(reason) : std::string(reason);
}

std::string Outcome::sentence() const {
    const bool tellsWhy = explains && kind != Kind::notRunning;
    return tellsWhy ? title + ". " + logText + "." : title + ".";
}

}  // namespace tolvane
