#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Pid.h"
#include "platform/linux/processes/ProcCgroup.h"

namespace tolvane::linuxhost {

/// The facts that decide whether a program belongs to the system.
struct ProgramFacts {
    Pid pid = 0;
    bool kernelThread = false;
    bool ofAnotherUser = false;
    /// Runs in a pid namespace that is not an application's sandbox.
    bool container = false;
    UnitFacts unit;
    /// A path; may be empty.
    std::string_view executable;
    /// A descendant, at any depth, of a terminal, an editor or a login shell.
    bool startedByUser = false;
    bool insideProject = false;
};

/// Package managers put both the desktop's own parts and a developer's `node` or `postgres` under /usr, so the path
/// alone cannot decide. Nullopt where no other fact does; then the path decides.
///
/// These belong to the system: processes of the kernel, of other users and of containers; units of the system, of the
/// session, and where no such units exist the programs that make a desktop, by name; installed programs that the user's
/// service manager keeps running. These do not: applications and other scopes of the user, what was started from a
/// terminal, an editor or a login shell, and what runs inside a project.
std::optional<bool> belongsToSystem(const ProgramFacts& facts);

/// Whether people start other programs from this one: a terminal, multiplexer or editor.
bool isLauncher(std::string_view programName);
/// Whether it is a shell, which is a login shell when its first argument begins with a dash.
bool isShell(std::string_view programName);

/// Whether `folder` lies inside a working copy strictly below `home`. Asks the disk.
bool isInsideProject(std::string_view folder, std::string_view home);

}  // namespace tolvane::linuxhost
