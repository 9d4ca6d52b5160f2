#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/model/AppModel.h"

namespace tolvane {

/// Files that the desktop or a command line hands to the program: rule files, which are imported. Main thread.
struct RuleFileArguments {
    /// Absolute, in the order given. A word names a file when it ends like one of rules or when something is there.
    std::vector<std::string> paths;
    /// Words that are no file.
    std::vector<std::string> others;

    static constexpr const char* noticeTitle = "Tolvane Rules";

    /// Sorts the words of a command line. `folder` is the absolute one that relative words start from.
    static RuleFileArguments among(const std::vector<std::string>& words, const std::string& folder);

    /// Imports them in order. What came of the last one is shown by the main window, or told in a notification where
    /// there is none: `bringForward` gives false then.
    static void open(AppModel& model, const std::vector<std::string>& paths, const std::function<bool()>& bringForward);
};

}  // namespace tolvane
