#include "app/LivingTargets.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tolvane {

LivingTargets::LivingTargets(const Host& host, std::vector<Incarnation> targets)
    : targets_(std::move(targets)), inspection_(host.makeInspection()), reader_(*inspection_, false) {}

bool LivingTargets::isAlive(const Incarnation& target) {
    const auto sample = reader_.read(target.pid);
    return sample && sample->startTime == target.startTime;
}

std::vector<Incarnation> LivingTargets::alive() {
    std::vector<Incarnation> living;
    std::ranges::copy_if(targets_, std::back_inserter(living), [this](const auto& each) { return isAlive(each); });
    return living;
}

bool LivingTargets::anyAlive() {
    return std::ranges::any_of(targets_, [this](const auto& each) { return isAlive(each); });
}

}  // namespace tolvane
