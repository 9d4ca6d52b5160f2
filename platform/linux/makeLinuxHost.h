#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Host.h"
#include "platform/linux/text/Environment.h"

namespace tolvane::linuxhost {

class SessionBus;

/// The user's message bus, which is spoken to from the first call on. Made before the application object: it has the
/// toolkit run on the loop that drives the bus.
std::shared_ptr<SessionBus> sessionBus(const Environment& environment);

/// What the toolkit and the program's entry bring along.
struct Toolkit {
    /// The bus that the program uses already; null has the host look for it.
    std::shared_ptr<SessionBus> bus = nullptr;
    /// Puts a text on the pasteboard.
    std::function<void(const std::string& text)> copyText = nullptr;
    /// Whether the program's windows are the X server's; null where it has none. Asked once the application object is
    /// made.
    std::function<bool()> drawsOnX11 = nullptr;
};

/// This machine. `layer` goes over the stored preferences. Made before or after the application object; what waits
/// for events needs the event loop from the first subscription on. Programs that are started later get the environment
/// that this process has now.
Host makeLinuxHost(const Environment& environment, const PreferencesLayer& layer, Toolkit toolkit = {});

}  // namespace tolvane::linuxhost
