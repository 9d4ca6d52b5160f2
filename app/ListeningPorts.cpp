#include "app/ListeningPorts.h"

#include <QPromise>
#include <QThreadPool>
#include <algorithm>
#include <memory>
#include <utility>

namespace tolvane {

namespace {

std::vector<int> sortedOnce(std::vector<int> ports) {
    std::ranges::sort(ports);
    const auto repeats = std::ranges::unique(ports);
    ports.erase(repeats.begin(), repeats.end());
    return ports;
}

}  // namespace

ListeningPorts::ListeningPorts(const Host& host) : host_(host) {
    QObject::connect(&job_, &QFutureWatcherBase::finished, &job_, [this] { deliver(); });
}

void ListeningPorts::read(Pid pid, Answer answer) {
    const auto promise = std::make_shared<QPromise<std::vector<int>>>();
    const std::shared_ptr<ProcessInspection> inspection = host_.makeInspection();
    answer_ = std::move(answer);
    promise->start();
    job_.setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, inspection, pid] {
        promise->addResult(sortedOnce(inspection->listeningPorts(pid)));
        promise->finish();
    });
}

void ListeningPorts::deliver() {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(job_.result());
}

}  // namespace tolvane
