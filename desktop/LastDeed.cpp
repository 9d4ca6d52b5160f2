#include "desktop/LastDeed.h"

#include <atomic>
#include <cstdlib>
#include <utility>

namespace tolvane::desktop {

namespace {

/// The only state that the end of the process can reach; null while there is nothing to do.
std::atomic<const std::function<void()>*> present = nullptr;

void doIt() {
    if (const auto* deed = present.exchange(nullptr)) (*deed)();
}

}  // namespace

LastDeed::LastDeed(std::function<void()> deed) : deed_(std::move(deed)) {
    static const bool isAsked = std::atexit(&doIt) == 0;
    if (isAsked) present = &deed_;
}

LastDeed::~LastDeed() { present = nullptr; }

}  // namespace tolvane::desktop
