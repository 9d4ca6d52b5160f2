#pragma once

#include <string>

namespace tolvane::linuxhost::KWinScript {

/// The name that KWin knows the script by. One that an earlier run left behind is replaced by it.
inline constexpr const char* name = "dev.tolvane.Tolvane.frontmost";
/// Where the script reports to, and what it calls: three texts, the process, the desktop entry's name and the class of
/// the window that is active now, all empty while none is.
inline constexpr const char* path = "/dev/tolvane/Tolvane/Frontmost";
inline constexpr const char* interface = "dev.tolvane.Frontmost";
inline constexpr const char* method = "Activated";

/// For KWin 5 and 6, which name the same things differently. `listener` is the unique name of who is called.
std::string text(const std::string& listener);

/// A file of the text that nobody else can write, in `folder`; empty when it cannot be made. The caller removes it.
std::string write(const std::string& folder, const std::string& text);

}  // namespace tolvane::linuxhost::KWinScript
