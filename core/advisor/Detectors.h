#pragma once

#include "core/advisor/Advice.h"

/// Each looks for one kind of finding and adds what it finds. They run in this order, and who comes first claims.
namespace tolvane::Detectors {

/// Simulated devices that are left booted.
void findSimulators(Advice& advice);
/// Servers of projects whose terminal has gone.
void findLeftRunning(Advice& advice);
/// Processes whose memory rises steadily.
void findGrowing(Advice& advice);
/// Older copies of a server that runs more than once.
void findDuplicates(Advice& advice);
/// What keeps half a core or more busy behind the application in front.
void findBusy(Advice& advice);
/// What sits unused and holds much.
void findIdle(Advice& advice);

}  // namespace tolvane::Detectors
