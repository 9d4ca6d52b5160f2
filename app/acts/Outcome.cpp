#include "app/acts/Outcome.h"

#include <algorithm>
#include <array>

#include "base/LowerCase.h"

namespace tolvane {

namespace {

using enum Outcome::Kind;

struct Row {
    Outcome::Kind kind;
    /// "{}" stands for the subject.
    std::string_view title;
    /// Each "{}" stands for a detail.
    std::string_view logText;
    bool failed = false;
    bool explains = false;
    bool freesAll = false;
};

constexpr std::string_view notRestarted = "Could not restart {}";
constexpr std::string_view notAllStarted = "Could not start all of {}";

constexpr std::array rows = {
    Row{.kind = onlyLogged, .title = "{} is over its limit", .logText = "Would {}"},
    Row{.kind = notified, .title = "{} is over its limit", .logText = "Notified"},
    Row{.kind = terminated, .title = "Stopped {}", .logText = "Terminated", .freesAll = true},
    Row{.kind = stillRunning,
        .title = "Could not stop {}",
        .logText = "Still running",
        .failed = true,
        .explains = true},
    Row{.kind = notRunning, .title = "{} was not running", .logText = "Not running", .failed = true, .explains = true},
    Row{.kind = quit, .title = "Quit {}", .logText = "Quit", .freesAll = true},
    Row{.kind = askedToQuit, .title = "Asked {} to quit", .logText = "Asked to quit", .failed = true},
    Row{.kind = relaunched, .title = "Restarted {}", .logText = "Relaunched"},
    Row{.kind = nothingToRelaunch, .title = notRestarted, .logText = "Not running", .failed = true, .explains = true},
    Row{.kind = stayedOpen,
        .title = notRestarted,
        .logText = "Did not quit, it may have unsaved changes",
        .failed = true,
        .explains = true},
    Row{.kind = notReopened,
        .title = notRestarted,
        .logText = "Quit, relaunch failed: {}",
        .failed = true,
        .explains = true},
    Row{.kind = lowered, .title = "Lowered the priority of {}", .logText = "Lowered priority"},
    Row{.kind = notLowered,
        .title = "Could not lower the priority of {}",
        .logText = "Priority unchanged",
        .failed = true,
        .explains = true},
    Row{.kind = startedAgain, .title = "Started {}", .logText = "Started again"},
    Row{.kind = commandsNotStarted,
        .title = notAllStarted,
        .logText = "{} did not start. Output goes to {}",
        .failed = true,
        .explains = true},
    Row{.kind = containersNotStarted,
        .title = notAllStarted,
        .logText = "Docker did not start its containers",
        .failed = true,
        .explains = true},
    Row{.kind = cancelled, .title = "", .logText = ""},
};

std::string filled(std::string_view pattern, std::initializer_list<std::string_view> values) {
    constexpr std::string_view gap = "{}";
    std::string text;
    for (const auto value : values) {
        const auto at = pattern.find(gap);
        if (at == std::string_view::npos) break;
        text.append(pattern.substr(0, at)).append(value);
        pattern.remove_prefix(at + gap.size());
    }
    return text.append(pattern);
}

}  // namespace

Outcome Outcome::of(Kind kind, std::string_view subject, std::initializer_list<std::string_view> details) {
    const auto& row = *std::ranges::find(rows, kind, &Row::kind);
    return {.kind = kind,
            .logText = filled(row.logText, details),
            .title = filled(row.title, {subject}),
            .failed = row.failed,
            .explains = row.explains,
            .freesAll = row.freesAll};
}

Outcome Outcome::ofLogging(RuleAction action, std::string_view subject) {
    return of(Kind::onlyLogged, subject, {lowerCased(RuleActions::title(action))});
}

std::string Outcome::body(std::string_view reason) const {
    return explains ? explanation() + " " + std::string(reason) : std::string(reason);
}

std::string Outcome::sentence() const {
    const bool titleSaysWhy = !explains || kind == Kind::notRunning;
    return titleSaysWhy ? title + "." : title + ". " + explanation();
}

}  // namespace tolvane
