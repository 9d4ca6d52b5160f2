#pragma once

#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/window/Screen.h"
#include "desktop/window/WindowState.h"

namespace tolvane::desktop {

/// All screens of the main window. The arguments outlive the result. `locale` is an ICU locale identifier.
std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale);

}  // namespace tolvane::desktop
