#pragma once

#include <string>
#include <vector>

#include "app/AppModel.h"
#include "desktop/Screen.h"
#include "desktop/WindowState.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// The register of the screens that exist. All arguments outlive what it makes. `locale` is an ICU identifier.
std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale);

}  // namespace tolvane::desktop
