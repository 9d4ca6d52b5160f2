#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/windows/FrontmostSource.h"

namespace tolvane::linuxhost {

/// The active window as KWin tells it: a script of ours runs inside of KWin and calls back over the session bus. It is
/// loaded into each KWin that comes, an own one after a restart included, and unloaded at the end of this.
class KWinFrontmost : public FrontmostSource {
public:
    /// KWin answers to its name before it takes scripts, and a desktop that starts is slow: it is asked again after
    /// `firstPause`, then after twice as long each time. A script that was started has `limit` for its first word.
    struct Patience {
        std::chrono::milliseconds firstPause{250};
        int attempts = 7;
        std::chrono::milliseconds limit = std::chrono::seconds(10);
    };

    /// `scriptFolder` is a folder of the user's that KWin can read too.
    KWinFrontmost(std::shared_ptr<SessionBus> bus, std::string scriptFolder, Patience patience);
    KWinFrontmost(std::shared_ptr<SessionBus> bus, std::string scriptFolder)
        : KWinFrontmost(std::move(bus), std::move(scriptFolder), Patience{}) {}
    KWinFrontmost(const KWinFrontmost&) = delete;
    KWinFrontmost& operator=(const KWinFrontmost&) = delete;
    ~KWinFrontmost() override;

    bool canTell() const override;
    std::optional<FrontWindow> inFront() const override;
    Subscription onChange(std::function<void()> changed) override;

    /// Nobody answers to KWin's name, or it took no script: this will not tell unless another KWin comes.
    bool isAway() const;

private:
    class Link;
    std::shared_ptr<Link> link_;
};

}  // namespace tolvane::linuxhost
