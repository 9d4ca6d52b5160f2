#pragma once

#include <string>
#include <vector>

namespace tolvane::linuxhost::KWinScript {

/// The names that KWin knows the scripts by. One that an earlier run left behind is replaced.
inline constexpr const char* watching = "dev.tolvane.Tolvane.windows";
inline constexpr const char* closing = "dev.tolvane.Tolvane.close";

/// Where the scripts report to: `Activated` with the process, the desktop entry's name and the class of the window that
/// is active now, all empty while none is; `Listed` with all windows, a line each of the same three between tabs;
/// `Closed` without a word.
inline constexpr const char* path = "/dev/tolvane/Tolvane/Windows";
inline constexpr const char* interface = "dev.tolvane.Windows";

/// Reports the windows, and each change. For KWin 5 and 6, which name the same things differently. `listener` is the
/// unique name of who is called.
std::string watch(const std::string& listener);
/// Closes the windows of these lines as their close buttons would, and reports.
std::string close(const std::string& listener, const std::vector<std::string>& lines);

}  // namespace tolvane::linuxhost::KWinScript
