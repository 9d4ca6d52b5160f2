#pragma once

#include <QSocketNotifier>
#include <memory>

#include "base/Observers.h"
#include "platform/linux/windows/FrontmostSource.h"
#include "platform/linux/windows/WindowSession.h"

namespace tolvane::linuxhost {

/// The active window of an X server, as a window manager names it.
class X11Frontmost : public FrontmostSource {
public:
    explicit X11Frontmost(std::shared_ptr<WindowSession> session);

    bool canTell() const override;
    std::optional<FrontWindow> inFront() const override;
    Subscription onChange(std::function<void()> changed) override;

private:
    void watch();
    void read();

    std::shared_ptr<WindowSession> session_;
    Observers<> observers_;
    /// Events use a connection of their own: a question on the same one could swallow them.
    std::unique_ptr<XDisplay> events_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tolvane::linuxhost
