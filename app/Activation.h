#pragma once

#include <string>

#include "platform/Date.h"

namespace tolvane {

/// An application came to the front.
struct Activation {
    std::string bundlePath;
    Date date;

    bool operator==(const Activation&) const = default;
};

}  // namespace tolvane
