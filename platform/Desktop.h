#pragma once

#include <string>

namespace tolvane {

/// Small services of the desktop. Main thread; no call waits or reports failure.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Opens the file with the user's default program for it.
    virtual void open(const std::string& path) = 0;
    /// Puts the text on the clipboard.
    virtual void copyText(const std::string& text) = 0;
};

}  // namespace tolvane
