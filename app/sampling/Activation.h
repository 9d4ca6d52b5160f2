#pragma once

#include <string>

#include "base/Date.h"

namespace tolvane {

/// An application came to the front.
struct Activation {
    std::string appPath;
    Date date;

    bool operator==(const Activation&) const = default;
};

}  // namespace tolvane
