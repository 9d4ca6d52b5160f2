#pragma once

#include <stop_token>

namespace tolvane {

/// Ends waits early. Every wait of a coroutine holds a token of its owner's source; cancelling resumes all of them at
/// once and reports to each that it was cancelled. The destructor cancels too, so that no coroutine goes on waiting for
/// an owner that is gone. Main thread.
class CancelSource {
public:
    CancelSource() = default;
    ~CancelSource() { cancel(); }
    CancelSource(const CancelSource&) = delete;
    CancelSource& operator=(const CancelSource&) = delete;

    void cancel() { source_.request_stop(); }
    /// Cancels the present waits; later ones get tokens of a new source.
    void renew() {
        cancel();
        source_ = std::stop_source();
    }
    std::stop_token token() const { return source_.get_token(); }

private:
    std::stop_source source_;
};

}  // namespace tolvane
