#include "app/ListeningPorts.h"

#include <QPromise>
#include <QThreadPool>
#include <memory>
#include <utility>

#include "core/sampling/ProcessReader.h"

namespace tolvane {

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
        promise->addResult(ProcessReader::listeningPorts(*inspection, pid));
        promise->finish();
    });
}

void ListeningPorts::deliver() {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(job_.result());
}

}  // namespace tolvane
