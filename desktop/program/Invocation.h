#pragma once

#include <QString>
#include <set>
#include <string>
#include <vector>

#include "app/model/RuleFileArguments.h"
#include "app/preferences/Switches.h"
#include "platform/Preferences.h"

namespace tolvane::desktop {

/// How one run is to go, settled before anything of it exists.
struct Invocation {
    Switches switches;
    /// Nothing to show windows on.
    bool headless = false;
    /// Without a display and without a wish, a first try shows something all the same.
    bool picturesByDefault = false;

    /// Files that the user opened with the program, absolute.
    RuleFileArguments files;

    static constexpr const char* defaultPictures = "pictures";

    /// `arguments` without the program's own name; `folder` is the absolute one that relative paths start from.
    static Invocation of(const std::vector<std::string>& arguments, bool displayPresent,
                         const std::string& folder = "/");

    /// The folder to render into; empty for a run with windows.
    QString picturesFolder(const Preferences& preferences) const;
    /// One line for each argument that means nothing.
    std::vector<std::string> complaints() const;

    /// Keys of preferences that the command line can set.
    static const std::set<std::string, std::less<>>& knownKeys();
};

}  // namespace tolvane::desktop
