#pragma once

#include <string>
#include <string_view>

#include "core/rules/Decision.h"

namespace tolvane {

/// How carrying out a decision ended.
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

/// What came of a decision, in the words of the log and of the notification. The words of the log are fixed: the
/// statistics compute on them.
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

    /// `deed` is not one of a relaunch.
    static Outcome of(Deed deed, const Decision& decision);
    /// Of a relaunch that gave `answer`.
    static Outcome ofRelaunch(std::string answer, const Decision& decision);

    /// Of the notification.
    std::string body(std::string_view reason) const;
};

}  // namespace tolvane
