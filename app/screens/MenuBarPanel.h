#pragma once

#include <string>
#include <string_view>

#include "core/sampling/CPULoad.h"

namespace tolvane {

/// The words of the tray's panel.
struct MenuBarPanel {
    /// "3.9 of 12 cores"
    static std::string load(const CPULoad& cpu, std::string_view locale);
    /// The same of a part of the cores.
    static std::string part(double share, int count, std::string_view locale);
};

}  // namespace tolvane
