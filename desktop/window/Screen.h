#pragma once

#include <functional>

#include "app/model/AppSection.h"
#include "desktop/window/Page.h"

namespace tolvane::desktop {

/// One entry in the list of screens. A screen is created when it is first shown.
struct Screen {
    AppSection section = AppSection::processes;
    std::function<Page*(QWidget* parent)> make;
};

}  // namespace tolvane::desktop
