#include "app/LivingTargets.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "core/sampling/ProcessReader.h"

namespace tolvane {

namespace {

/// What can be asked of the kernel while one question is answered.
class Look {
public:
    explicit Look(const Host& host) : inspection_(host.makeInspection()), reader_(*inspection_, false) {}

    bool isAlive(const Incarnation& target) {
        const auto sample = reader_.read(target.pid);
        return sample && sample->startTime == target.startTime;
    }

private:
    std::unique_ptr<ProcessInspection> inspection_;
    ProcessReader reader_;
};

}  // namespace

LivingTargets::LivingTargets(const Host& host, std::vector<Incarnation> targets)
    : host_(host), targets_(std::move(targets)) {}

std::vector<Incarnation> LivingTargets::alive() const {
    Look look(host_);
    std::vector<Incarnation> living;
    std::ranges::copy_if(targets_, std::back_inserter(living), [&](const auto& each) { return look.isAlive(each); });
    return living;
}

bool LivingTargets::anyAlive() const {
    Look look(host_);
    return std::ranges::any_of(targets_, [&](const auto& each) { return look.isAlive(each); });
}

}  // namespace tolvane
