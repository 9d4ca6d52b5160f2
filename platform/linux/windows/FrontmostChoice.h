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

/// Which source tells who is in front in this session. The first of these that there is:
///  1. the X server, in a session of X11;
///  2. the list of windows of a Wayland compositor that has one for every program;
///  3. KWin, by a script;
///  4. what programs tell to screen readers.
/// The first two are there from the beginning or never. KWin may come and go, and while it is away the last one is
/// listened to. Nothing is asked before the first question. Main thread, with its event loop.
class FrontmostChoice {
public:
    /// `scriptFolder` is where KWin finds the script: the user's runtime folder.
    FrontmostChoice(std::shared_ptr<WindowSession> session, std::shared_ptr<SessionBus> bus, std::string scriptFolder);

    /// Null while nobody can tell.
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
    /// The display server's, where it has one.
    std::unique_ptr<FrontmostSource> server_;
    std::shared_ptr<KWinWindows> kwin_;
    std::unique_ptr<AccessibilityFrontmost> accessibility_;
    Subscription ofServer_, ofKWin_, ofAccessibility_;
    Observers<> observers_;
};

}  // namespace tolvane::linuxhost
