#pragma once

#include <QSocketNotifier>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/Applications.h"
#include "platform/linux/Observers.h"
#include "platform/linux/windows/WindowSession.h"

namespace tolvane::linuxhost {

/// Who is in front, from whoever tells in this session: the X server with its window manager, or a Wayland compositor
/// that offers its list of windows. Others keep it to themselves, and then this cannot tell. News come as events of the
/// display server; nothing wakes meanwhile. Main thread, with its event loop.
class SessionFrontmost : public Frontmost {
public:
    explicit SessionFrontmost(std::shared_ptr<WindowSession> session, std::string proc = "/proc");
    ~SessionFrontmost() override;

    bool canTell() const override;
    std::optional<FrontmostApplication> current() const override;
    Subscription onActivation(std::function<void(std::string)> activated) override;

private:
    std::optional<Text> bundlePath() const;
    std::optional<Text> bundlePathOfX11() const;
    void watch();
    void watchX11();
    void readX11();
    void look();

    std::shared_ptr<WindowSession> session_;
    std::string proc_;
    Observers<std::string> observers_;
    bool isWatching_ = false;
    std::optional<Text> last_;
    std::optional<std::chrono::steady_clock::time_point> nobodySince_;
    std::unique_ptr<XDisplay> events_;
    std::unique_ptr<QSocketNotifier> notifier_;
    Subscription toplevels_;
};

}  // namespace tolvane::linuxhost
