#pragma once

#include <QFutureWatcher>
#include <functional>
#include <vector>

#include "platform/Host.h"

namespace tolvane {

/// Reads on a background thread which TCP ports a process listens on, since asking the kernel may take a while.
/// Main thread. The latest question is answered; one before it, or one still open when this goes, is not.
class ListeningPorts {
public:
    using Answer = std::function<void(std::vector<int>)>;

    /// `host` outlives this.
    explicit ListeningPorts(const Host& host);

    /// Calls back on the main thread with the ports, ascending and without repeats.
    void read(Pid pid, Answer answer);
    void forget() { answer_ = nullptr; }

private:
    void deliver();

    const Host& host_;
    Answer answer_;
    /// Tells of the latest job alone.
    QFutureWatcher<std::vector<int>> job_;
};

}  // namespace tolvane
