#pragma once

#include <QPoint>
#include <optional>
#include <vector>

#include "app/screens/processes/ProcessActions.h"
#include "desktop/look/Look.h"

class QWidget;

namespace tolvane::desktop {

/// Asks at a place of the screen; none when the user thinks better of it or there is nothing to choose. Runs the loop.
std::optional<ProcessAction> askMenu(const Look& look, const std::vector<ProcessMenuItem>& items, QPoint place,
                                     QWidget* parent);

}  // namespace tolvane::desktop
