#include "app/acts/LivingTargets.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tolvane {

namespace {

/// Reads only the two records that make a process part of a sample: a wait for many need not read the rest of each.
bool isAlive(ProcessInspection& kernel, const Incarnation& target) {
    const auto record = kernel.bsdRecord(target.pid);
    return record && record->startTime == target.startTime && kernel.usage(target.pid);
}

}  // namespace

LivingTargets::LivingTargets(const Host& host, std::vector<Incarnation> targets)
    : host_(host), targets_(std::move(targets)) {}

std::vector<Incarnation> LivingTargets::alive() const {
    const auto kernel = host_.makeInspection();
    std::vector<Incarnation> living;
    std::ranges::copy_if(targets_, std::back_inserter(living),
                         [&](const auto& each) { return isAlive(*kernel, each); });
    return living;
}

bool LivingTargets::anyAlive() const {
    const auto kernel = host_.makeInspection();
    return std::ranges::any_of(targets_, [&](const auto& each) { return isAlive(*kernel, each); });
}

}  // namespace tolvane
