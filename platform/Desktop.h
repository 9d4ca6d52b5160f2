#pragma once

#include <string>

namespace tolvane {

/// Small favours of the desktop. Main thread; none of them waits or fails aloud.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Shows the file or folder selected in the file manager.
    virtual void reveal(const std::string& path) = 0;
    /// Opens the file with the user's program for it.
    virtual void open(const std::string& path) = 0;
    /// Puts the text on the pasteboard.
    virtual void copyText(const std::string& text) = 0;
};

}  // namespace tolvane
