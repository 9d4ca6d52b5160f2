#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

/// What came of an act, with its texts for the log, the notification and the notice on a screen. The log's texts never
/// change: the statistics count by them.
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
        /// The program ended during the act. Never logged or shown.
        cancelled,
    };

    Kind kind = Kind::cancelled;
    std::string logText = {};
    /// Notification title.
    std::string title = {};
    /// The act did not achieve what was asked.
    bool failed = false;
    /// The log's text gives the reason, so the notification repeats it.
    bool explains = false;
    /// The processes are gone and freed all their memory.
    bool freesAll = false;
    /// Path of the application that was started again, whose memory is worth measuring later.
    std::optional<std::string> relaunchedApp = {};

    bool operator==(const Outcome&) const = default;

    /// `subject` is the name shown to the user. `details` fill the gaps of the log's text: the host's error for
    /// `notReopened`; the commands and the path of their log for `commandsNotStarted`.
    static Outcome of(Kind kind, std::string_view subject, std::initializer_list<std::string_view> details = {});
    /// For an action that a rule only logs.
    static Outcome ofLogging(RuleAction action, std::string_view subject);
    static Outcome cancelled() { return {}; }

    /// Notification text for a rule's act.
    std::string body(std::string_view reason) const;
    /// The log's text as a sentence.
    std::string explanation() const { return logText + "."; }
    /// For a notice: "Could not stop node. Still running."
    std::string sentence() const;
};

}  // namespace tolvane
