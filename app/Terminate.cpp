#include <QCoroTask>

#include "app/AppModelPrivate.h"

namespace tolvane {

QCoro::Task<bool> AppModel::terminate(std::vector<Pid> /*pids*/, bool /*force*/) { co_return false; }

QCoro::Task<std::string> AppModel::relaunch(std::vector<Pid> /*pids*/) { co_return std::string(); }

std::vector<std::shared_ptr<RunningApplication>> AppModel::runningApps(const std::vector<Pid>& /*pids*/) const {
    return {};
}

void AppModel::forceQuit(const std::vector<Line>& /*lines*/) {}

}  // namespace tolvane
