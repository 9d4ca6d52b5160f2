#pragma once

#include <QPoint>
#include <optional>
#include <vector>

#include "app/screens/processes/ProcessActions.h"

class QWidget;

namespace tolvane::desktop {

/// Opens a menu at a point on the screen and runs the event loop until it closes. Nullopt if the user chooses nothing
/// or there is nothing to choose.
std::optional<ProcessAction> askMenu(const std::vector<ProcessMenuItem>& items, QPoint place, QWidget* parent);

}  // namespace tolvane::desktop
