#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Pid.h"
#include "platform/linux/processes/ProcCgroup.h"

namespace tolvane::linuxhost {

/// What decides whether a program belongs to the system.
struct ProgramFacts {
    Pid pid = 0;
    bool kernelThread = false;
    bool ofAnotherUser = false;
    /// Runs below a pid namespace of its own and is no application's sandbox.
    bool container = false;
    UnitFacts unit;
    /// A path; may be empty.
    std::string_view executable;
    /// Started, at whatever distance, from a terminal, an editor or a login shell.
    bool startedByUser = false;
    bool insideProject = false;
};

/// Package managers put the desktop's own parts and a developer's `node` or `postgres` alike under /usr, so more than
/// the path has to tell them apart. None where nothing tells: then the path decides.
///
/// The system's: processes of the kernel, of other users and of containers; units of the system, of the session, and
/// where no such units exist the programs that make a desktop, by name; installed programs that the user's service
/// manager keeps running.
/// Not the system's: applications and other scopes of the user, what was started from a terminal, an editor or a
/// login shell, and what runs inside a project.
std::optional<bool> belongsToSystem(const ProgramFacts& facts);

/// Programs that people start other programs from: terminals, multiplexers, editors.
bool isLauncher(std::string_view programName);
/// Programs that are login shells when their first argument begins with a dash.
bool isShell(std::string_view programName);

/// Whether `folder` lies inside a working copy strictly below `home`. Asks the disk.
bool isInsideProject(std::string_view folder, std::string_view home);

}  // namespace tolvane::linuxhost
