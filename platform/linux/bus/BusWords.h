#pragma once

#include <string>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost::BusWords {

/// What a bus tells of the names on it.
SessionBus::Source ownerChanges(const std::string& name);
/// Of such news: the unique name of who has it now; empty when nobody does.
std::string newOwner(GVariant* arguments);

/// Asks the bus who has a name. Nobody is started for it.
SessionBus::Call ownerOf(const std::string& name);
/// Asks the bus for the process behind a name.
SessionBus::Call processOf(const std::string& name);

/// An answer of one text; empty for any other.
std::string textIn(GVariant* answer);

}  // namespace tolvane::linuxhost::BusWords
