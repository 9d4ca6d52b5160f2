#pragma once

#include <QMenu>
#include <set>
#include <vector>

#include "app/screens/ProcessActions.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// The entries for which something carries them out, without dividers that part nothing.
std::vector<ProcessMenuItem> offeredItems(const std::vector<ProcessMenuItem>& items,
                                          const std::set<ProcessAction>& offered);

/// Asks at a place of the screen; none when the user thinks better of it or there is nothing to choose. Runs the loop.
std::optional<ProcessAction> askMenu(const Look& look, const std::vector<ProcessMenuItem>& items, QPoint place,
                                     QWidget* parent);

}  // namespace tolvane::desktop
