#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

/// What came of an act, in the texts of the log, of the notification and of the notice on a screen. The log's texts are
/// fixed: the statistics compute on them.
struct Outcome {
    enum class Kind {
        onlyLogged,
        notified,
        terminated,
        stillRunning,
        notRunning,
        quit,
        askedToQuit,
        relaunched,
        nothingToRelaunch,
        stayedOpen,
        notReopened,
        lowered,
        notLowered,
        startedAgain,
        commandsNotStarted,
        containersNotStarted,
        /// The program's end cut the act short. Nothing is to be said about it.
        cancelled,
    };

    Kind kind = Kind::cancelled;
    std::string logText = {};
    /// Title of the notification.
    std::string title = {};
    /// What was asked for did not come about.
    bool failed = false;
    /// The log's text says why, so the notification gives it too.
    bool explains = false;
    /// The processes are gone, and gave back all that they held.
    bool freesAll = false;
    /// Path of the application that was started again; it holds memory anew.
    std::optional<std::string> relaunchedApp = {};

    bool operator==(const Outcome&) const = default;

    /// `subject` is what people call the target. `details` fill the log's text where the kind leaves room: the host's
    /// error for `notReopened`, the commands and their log for `commandsNotStarted`.
    static Outcome of(Kind kind, std::string_view subject, std::initializer_list<std::string_view> details = {});
    /// Of an action that a rule only logged.
    static Outcome ofLogging(RuleAction action, std::string_view subject);
    static Outcome cancelled() { return {}; }

    /// Text of the notification about a rule's act.
    std::string body(std::string_view reason) const;
    /// The log's text as a sentence.
    std::string explanation() const { return logText + "."; }
    /// For a notice: "Could not stop node. Still running."
    std::string sentence() const;
};

}  // namespace tolvane
