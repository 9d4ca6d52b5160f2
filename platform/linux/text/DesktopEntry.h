#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"

namespace tolvane::linuxhost {

/// One installed application, as its desktop entry describes it.
struct DesktopEntry {
    /// The path of the entry's file.
    Text path;
    /// The file's path below its folder, with dashes for slashes and without ".desktop".
    std::string identifier;
    /// In the user's language.
    std::string name;
    /// A name in the icon theme or an absolute path; may be empty.
    std::string icon;
    /// The words of the command line without its placeholders; empty for a line that cannot be parsed.
    std::vector<std::string> command;
    /// The entry counts as missing, and hides others with its identifier.
    bool hidden = false;
    /// Appears in no menu: a helper of another application, or a handler for files.
    bool notDisplayed = false;
    /// Runs inside a terminal.
    bool needsTerminal = false;
    bool isTerminalEmulator = false;
    /// The application that its windows name, if that is not the identifier; may be empty.
    std::string windowClass;

    bool operator==(const DesktopEntry&) const = default;
};

/// Returns nullopt for a file that is unreadable or describes no application. `locale` selects the name; empty means
/// the user's own.
std::optional<DesktopEntry> readDesktopEntry(const std::string& path, std::string identifier,
                                             const std::string& locale = {});

/// The words of an Exec line, "env A=b /opt/x/app --flag %U", without %U and other placeholders. Empty when the
/// quotes do not match.
std::vector<std::string> wordsOfExec(const std::string& exec);

/// The program that a command line really runs: the first word after `env`, assignments and starters such as `nice`.
/// Empty when no word is left.
std::string_view programOfCommand(const std::vector<std::string>& command);

/// Whether a program, given by its file name, only runs other code or passes a request on, so that its name does not
/// tell which application it is.
bool isNoIdentity(std::string_view programName);

/// Whether a program, given by its file name, is a command interpreter that people type into.
bool isShellName(std::string_view programName);

}  // namespace tolvane::linuxhost
