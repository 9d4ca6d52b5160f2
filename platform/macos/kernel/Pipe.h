#pragma once

#include "base/files/FileDescriptor.h"

namespace tolvane::machost {

/// A pipe that owns both ends until they are closed. Children inherit neither.
class Pipe {
public:
    Pipe();

    explicit operator bool() const { return static_cast<bool>(output_); }
    /// The read end.
    int output() const { return output_.get(); }
    /// The write end; -1 once it is closed.
    int input() const { return input_.get(); }
    void closeInput() { input_.reset(); }

private:
    FileDescriptor output_;
    FileDescriptor input_;
};

}  // namespace tolvane::machost
