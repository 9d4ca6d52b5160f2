#pragma once

#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/window/Screen.h"
#include "desktop/window/WindowState.h"

namespace tolvane::desktop {

/// The register of the screens that exist. All arguments outlive what it makes. `locale` is an ICU identifier.
std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale);

}  // namespace tolvane::desktop
