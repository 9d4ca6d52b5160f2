#pragma once

namespace tolvane::machost {

/// A pipe that owns both ends until they are closed. Children inherit neither.
class Pipe {
public:
    Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe();

    explicit operator bool() const { return output_ >= 0; }
    /// The read end.
    int output() const { return output_; }
    /// The write end; -1 once it is closed.
    int input() const { return input_; }
    void closeInput();

private:
    int output_ = -1;
    int input_ = -1;
};

}  // namespace tolvane::machost
