#pragma once

#include <stop_token>

namespace tolvane {

/// Ends waits early. Every wait of a coroutine holds a token of the source that it belongs to; cancelling resumes all
/// of them at once, each with the word that it was cancelled. A source that goes cancels, so that no coroutine is left
/// waiting for something that no longer exists. Main thread.
class CancelSource {
public:
    CancelSource() = default;
    ~CancelSource() { cancel(); }
    CancelSource(const CancelSource&) = delete;
    CancelSource& operator=(const CancelSource&) = delete;

    void cancel() { source_.request_stop(); }
    /// Cancels, and begins anew for the waits to come.
    void renew() {
        cancel();
        source_ = std::stop_source();
    }
    std::stop_token token() const { return source_.get_token(); }

private:
    std::stop_source source_;
};

}  // namespace tolvane
