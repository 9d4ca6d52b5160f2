#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/model/AppModel.h"

namespace tolvane {

/// The rule files that the desktop or a command line hands to the program for import. Main thread.
struct RuleFileArguments {
    /// Absolute, in the order given. An argument names a file when it has a rule file's extension or the path exists.
    std::vector<std::string> paths;
    /// Arguments that name no file.
    std::vector<std::string> others;

    static constexpr const char* noticeTitle = "Tolvane Rules";

    /// Sorts the arguments of a command line. `folder` is absolute; relative paths start from it.
    static RuleFileArguments among(const std::vector<std::string>& words, const std::string& folder);

    /// Imports the files in order. The main window shows the result of the last one; without a window, when
    /// `bringForward` returns false, a notification does.
    static void open(AppModel& model, const std::vector<std::string>& paths, const std::function<bool()>& bringForward);
};

}  // namespace tolvane
