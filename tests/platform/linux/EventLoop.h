#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <chrono>

namespace tolvane::linuxhost {

/// Runs the event loop until the condition holds; false when it does not within the limit.
template <typename Condition>
bool runUntil(Condition holds, std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer look;
    look.start(5);
    while (!holds()) {
        if (elapsed.elapsed() > limit.count()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Runs the event loop for a span, to show that something does not happen.
inline void runFor(std::chrono::milliseconds span) {
    runUntil([] { return false; }, span);
}

}  // namespace tolvane::linuxhost
