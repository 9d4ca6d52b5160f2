#include "app/tasks/PortLookup.h"

#include <QCoroTask>
#include <memory>
#include <stop_token>
#include <utility>

#include "app/tasks/BackgroundCall.h"
#include "core/sampling/ProcessReader.h"

namespace tolvane {

namespace {

QCoro::Task<> ask(Executor& executor, std::shared_ptr<ProcessInspection> inspection, Pid pid, PortLookup::Answer answer,
                  std::stop_token cancellation) {
    // Skip the work if a newer question replaced this one while it was queued.
    auto look = [inspection = std::move(inspection), pid, cancellation] {
        return cancellation.stop_requested() ? std::vector<int>{} : ProcessReader::listeningPorts(*inspection, pid);
    };
    auto ports = co_await BackgroundCall(executor, std::move(look), cancellation);
    if (ports) answer(std::move(*ports));
}

}  // namespace

void PortLookup::read(Pid pid, Answer answer) {
    question_.renew();
    static_cast<void>(ask(executor_, host_.makeInspection(), pid, std::move(answer), question_.token()));
}

}  // namespace tolvane
