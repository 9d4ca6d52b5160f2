#pragma once

#include <string>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

/// How an act on a subject ended.
enum class Deed {
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

/// What came of an act, in the words of the log and of the notification. The words of the log are fixed: the statistics
/// compute on them.
struct Outcome {
    Deed deed = Deed::onlyLogged;
    /// For the log.
    std::string word;
    /// Of the notification.
    std::string title;
    /// The notification says the word before it gives the reason.
    bool tellsWord = false;
    /// The processes are gone, and gave back all that they held.
    bool freesAll = false;

    bool operator==(const Outcome&) const = default;

    /// What relaunching an application answers when all went well.
    static constexpr std::string_view relaunchedWord = "Relaunched";

    /// `subject` is what people call it. Of a deed whose word depends on nothing else.
    static Outcome of(Deed deed, std::string_view subject);
    /// Of an action that a rule only logged.
    static Outcome ofLogging(RuleAction action, std::string_view subject);
    /// Of a relaunch that gave `answer`.
    static Outcome ofRelaunch(std::string answer, std::string_view subject);

    /// Of the notification.
    std::string body(std::string_view reason) const;
};

}  // namespace tolvane
