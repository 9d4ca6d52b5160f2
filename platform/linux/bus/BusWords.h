#pragma once

#include <string>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost::BusWords {

/// The signal by which a bus announces who owns a name.
SessionBus::Source ownerChanges(const std::string& name);
/// From that signal's arguments: the unique name of the new owner, or empty when the name was given up.
std::string newOwner(GVariant* arguments);

/// Asks the bus who owns a name, without starting anyone for it.
SessionBus::Call ownerOf(const std::string& name);
/// Asks the bus for the process behind a name.
SessionBus::Call processOf(const std::string& name);

/// The text of an answer that holds exactly one; empty for any other answer.
std::string textIn(GVariant* answer);

}  // namespace tolvane::linuxhost::BusWords
