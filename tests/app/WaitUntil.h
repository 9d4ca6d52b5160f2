#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace tolvane {

/// Runs the event loop until the condition holds; false when it does not hold within ten seconds.
template <typename Condition>
bool waitUntil(Condition holds) {
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(10'000);
    while (!holds() && limit.isActive()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return holds();
}

}  // namespace tolvane
