#pragma once

#include <memory>
#include <string>

#include "base/Observers.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/windows/AccessibilityFrontmost.h"
#include "platform/linux/windows/FrontmostSource.h"
#include "platform/linux/windows/KWinWindows.h"
#include "platform/linux/windows/WindowSession.h"

namespace tolvane::linuxhost {

/// Chooses which source reports the window in front in this session, the first of these that exists:
/// 1. the X server, in an X11 session;
/// 2. the window list of a Wayland compositor that offers one to every program;
/// 3. KWin, through a script;
/// 4. what programs report to screen readers.
/// The first two exist from the start or never. KWin may come and go; while it is away we listen to the last one.
/// Nothing is asked before the first question. Main thread, with its event loop.
class FrontmostChoice {
public:
    /// `scriptFolder` is where KWin finds the script: the user's runtime folder.
    FrontmostChoice(std::shared_ptr<WindowSession> session, std::shared_ptr<SessionBus> bus, std::string scriptFolder);

    /// Null while no source can answer.
    const FrontmostSource* teller();
    Subscription onChange(std::function<void()> changed);

private:
    void begin();
    void beginOnBus();
    void updateOnBus();

    std::shared_ptr<WindowSession> session_;
    std::shared_ptr<SessionBus> bus_;
    std::string scriptFolder_;
    bool hasBegun_ = false;
    /// The display server's source, where it has one.
    std::unique_ptr<FrontmostSource> server_;
    std::shared_ptr<KWinWindows> kwin_;
    std::unique_ptr<AccessibilityFrontmost> accessibility_;
    Subscription ofServer_, ofKWin_, ofAccessibility_;
    Observers<> observers_;
};

}  // namespace tolvane::linuxhost
