#pragma once

#include <string>
#include <vector>

namespace tolvane::linuxhost::KWinScript {

/// The names under which KWin knows the scripts. A script left by an earlier run is replaced.
inline constexpr const char* watching = "dev.tolvane.Tolvane.windows";
inline constexpr const char* closing = "dev.tolvane.Tolvane.close";

/// Where the scripts report: `Activated` with the process, the desktop entry's name and the class of the active window,
/// all empty while there is none; `Listed` with all windows, one a line with the same three fields between tabs;
/// `Closed` without arguments.
inline constexpr const char* path = "/dev/tolvane/Tolvane/Windows";
inline constexpr const char* interface = "dev.tolvane.Windows";

/// Reports the windows and each change. Runs on KWin 5 and 6, which name the same things differently. `listener` is the
/// unique name to call.
std::string watch(const std::string& listener);
/// Closes the windows of these lines as their close buttons would, and reports.
std::string close(const std::string& listener, const std::vector<std::string>& lines);

}  // namespace tolvane::linuxhost::KWinScript
