#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

namespace tolvane::linuxhost::testing {

/// How often this process, all its threads together, was scheduled again after waiting.
inline long long wakeUps() {
    long long count = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream file(thread.path() / "status");
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("voluntary_ctxt_switches:")) count += std::stoll(line.substr(24));
        }
    }
    return count;
}

/// Wake-ups during two seconds in which the loop has nothing to do but wait for the test's own alarm.
inline long long wakeUpsOfTwoSeconds() {
    QTimer alarm;
    bool isOver = false;
    QObject::connect(&alarm, &QTimer::timeout, [&] { isOver = true; });
    alarm.setSingleShot(true);
    alarm.start(2000);
    const auto before = wakeUps();
    while (!isOver) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return wakeUps() - before;
}

/// The fewest wake-ups of several spans. One-time work, above all the start of a daemon, falls into the first spans;
/// whatever recurs falls into each.
inline long long fewestWakeUps(int spans) {
    auto fewest = wakeUpsOfTwoSeconds();
    for (int count = 1; count < spans && fewest > 1; ++count) fewest = std::min(fewest, wakeUpsOfTwoSeconds());
    return fewest;
}

}  // namespace tolvane::linuxhost::testing
