#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"

namespace tolvane::linuxhost {

/// One installed application, as its desktop entry describes it.
struct DesktopEntry {
    /// The entry's file.
    Text path;
    /// The file's place below its folder, dashes for slashes, without ".desktop".
    std::string identifier;
    /// In the user's language.
    std::string name;
    /// An icon theme's name or an absolute path; may be empty.
    std::string icon;
    /// The program's command line as words, without the placeholders; empty for a line that cannot be read.
    std::vector<std::string> command;
    /// Says that it is not there; it hides others of its identifier.
    bool hidden = false;
    /// Stands in no menu: a helper of another application, or a handler for files.
    bool notDisplayed = false;
    /// Runs inside a terminal.
    bool needsTerminal = false;
    bool isTerminalEmulator = false;
    /// What its windows say that they belong to, where that is not the identifier; may be empty.
    std::string windowClass;

    bool operator==(const DesktopEntry&) const = default;
};

/// None for a file that cannot be read or describes no application. `locale` is for the name; empty is the user's own.
std::optional<DesktopEntry> readDesktopEntry(const std::string& path, std::string identifier,
                                             const std::string& locale = {});

/// The words of an Exec line, "env A=b /opt/x/app --flag %U", without %U and its like. Empty where its quotes do not
/// match.
std::vector<std::string> wordsOfExec(const std::string& exec);

/// The program that a command line is about: the first word behind `env`, assignments and starters such as `nice`.
/// Empty where none is left.
std::string_view programOfCommand(const std::vector<std::string>& command);

/// Programs that run other people's code or pass a request on: to be one of them says nothing about which application
/// it is. By file name.
bool isNoIdentity(std::string_view programName);

/// Command interpreters that people type into. By file name.
bool isShellName(std::string_view programName);

}  // namespace tolvane::linuxhost
