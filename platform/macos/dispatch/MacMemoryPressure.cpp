#include "platform/macos/dispatch/MacMemoryPressure.h"

#include <utility>

#include "platform/macos/dispatch/MainSource.h"

namespace tolvane::machost {

MacMemoryPressure::MacMemoryPressure(Dispatch dispatch, OnMain onMain)
    : dispatch_(std::move(dispatch)), onMain_(std::move(onMain)) {}

Subscription MacMemoryPressure::onPressure(std::function<void()> pressed) {
    return onEvent(dispatch_, onMain_, {.kind = SourceKind::memoryPressure, .mask = pressureWarning | pressureCritical},
                   std::move(pressed));
}

}  // namespace tolvane::machost
