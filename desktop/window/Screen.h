#pragma once

#include <functional>

#include "app/model/AppSection.h"
#include "desktop/window/Page.h"

namespace tolvane::desktop {

/// One entry of the register of screens. A screen is made when it is first shown.
struct Screen {
    AppSection section = AppSection::processes;
    std::function<Page*(QWidget* parent)> make;
};

}  // namespace tolvane::desktop
