#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::linuxhost {

/// The values for the placeholders of an Exec line.
struct ExecFacts {
    /// "%c"
    std::string name;
    /// "%i" becomes "--icon" and this, or nothing when this is empty.
    std::string icon;
    /// "%k", the entry's file.
    std::string entryPath;
    /// Absolute paths: "%f" is the first and "%F" all of them, "%u" and "%U" the same as addresses. A line without
    /// any of these gets the first path at its end.
    std::vector<std::string> files;
};

/// The words to execute for an Exec line such as `env A=b /opt/x/app --flag "a b" %U`. Empty when the quotes do not
/// match or no word is left.
std::vector<std::string> commandOfExec(const std::string& exec, const ExecFacts& facts);

/// "file:///home/ada/a%20b" for an absolute path.
std::string fileAddress(const std::string& path);

}  // namespace tolvane::linuxhost
