#pragma once

#include <QString>
#include <set>
#include <string>
#include <vector>

#include "app/model/RuleFileArguments.h"
#include "app/preferences/Switches.h"
#include "platform/Preferences.h"

namespace tolvane::desktop {

/// How this run was started, determined before anything else is created.
struct Invocation {
    Switches switches;
    /// There is no display.
    bool headless = false;
    /// There is neither a display nor an argument that chooses a mode, so the run renders pictures: a first try then
    /// shows something.
    bool picturesByDefault = false;

    /// Absolute paths of the files that the user opened with the program.
    RuleFileArguments files;

    static constexpr const char* defaultPictures = "pictures";

    /// `arguments` are without the program's name; relative paths are resolved against `folder`, which is absolute.
    static Invocation of(const std::vector<std::string>& arguments, bool displayPresent,
                         const std::string& folder = "/");

    /// The folder to render into; empty if the run opens windows.
    QString picturesFolder(const Preferences& preferences) const;
    /// One line for each unknown argument.
    std::vector<std::string> complaints() const;

    /// Keys of the preferences that the command line can set.
    static const std::set<std::string, std::less<>>& knownKeys();
};

}  // namespace tolvane::desktop
