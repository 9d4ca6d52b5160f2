#pragma once

#include "platform/Trays.h"

namespace tolvane::machost {

/// A Mac always has a menu bar.
class MenuBar : public Trays {
public:
    bool present() const override { return true; }
    Subscription onChange(std::function<void()> /*changed*/) override { return {}; }
};

}  // namespace tolvane::machost
