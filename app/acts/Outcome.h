#pragma once

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
        notRelaunched,
        lowered,
        notLowered,
    };

    Kind kind = Kind::onlyLogged;
    std::string logText;
    /// Title of the notification.
    std::string title;
    /// The log's text says why, so the notification gives it too.
    bool explains = false;
    /// The processes are gone, and gave back all that they held.
    bool freesAll = false;

    bool operator==(const Outcome&) const = default;

    /// The log's text of a relaunch that went well.
    static constexpr std::string_view relaunchedText = "Relaunched";

    /// `subject` is what people call it.
    static Outcome of(Kind kind, std::string_view subject);
    /// Of an action that a rule only logged.
    static Outcome ofLogging(RuleAction action, std::string_view subject);
    /// Of a relaunch that gave `answer`.
    static Outcome ofRelaunch(std::string answer, std::string_view subject);

    /// Text of the notification.
    std::string body(std::string_view reason) const;
    /// For a notice: "Could not stop node. Still running."
    std::string sentence() const;
};

}  // namespace tolvane
