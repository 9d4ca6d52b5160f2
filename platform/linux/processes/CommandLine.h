#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"

namespace tolvane::linuxhost {

/// The arguments in the bytes of /proc/PID/cmdline, each ended by a NUL; the last may lack it.
std::vector<std::string_view> splitArguments(std::string_view bytes);

/// The value of a NAME=value entry in the bytes of /proc/PID/environ; nullopt when it is missing.
std::optional<std::string_view> environmentValue(std::string_view environment, std::string_view name);

/// Arguments as valid UTF-8, without empty ones at the beginning: the first names the program.
TextList argumentTexts(const std::vector<std::string_view>& arguments);

/// The entries in the bytes of /proc/PID/environ as valid UTF-8, without empty ones.
std::vector<std::string> environmentTexts(std::string_view environment);

/// Whether a program wrote a title over its arguments: "npm run dev" followed by empty arguments, or one text with
/// blanks.
bool isTitle(const std::vector<std::string_view>& arguments, std::string_view executable);

/// The disk access that finds the program that a title names.
struct TitleLookup {
    /// The first bytes of a file that may be executed; nullopt when there is no such file.
    std::function<std::optional<std::string>(const std::string& path)> head;
    /// Folders in which the process looks for programs, in order.
    std::vector<std::string> folders;
};

/// The arguments that would start the same process from the same executable, for a title that names a command: the
/// interpreter, the script found where the process itself looks for programs, and the title's other words. For a
/// program that joined its own arguments, the separate arguments.
/// A title that describes a state ("nginx: worker process") stays as it is, as one text.
std::vector<std::string> argumentsOfTitle(std::string_view title, std::string_view executable,
                                          const TitleLookup& lookup);

/// Whether a file that begins with `head` is a script for the interpreter of this name: "#!/usr/bin/env node".
bool isScriptFor(std::string_view head, std::string_view interpreter);

/// The folders of a PATH value, followed by the executable's own folder.
std::vector<std::string> searchFolders(std::string_view path, std::string_view executable);

/// The first bytes of a file that we may execute.
std::optional<std::string> executableHead(const std::string& path);

}  // namespace tolvane::linuxhost
