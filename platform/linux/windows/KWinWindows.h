#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/windows/FrontmostSource.h"

namespace tolvane::linuxhost {

/// The windows of a KWin session, and which of them is active. A script of ours runs inside KWin and reports over the
/// session bus. It is loaded into every KWin that appears, a restarted one included, and unloaded when this object
/// ends. Nothing wakes while no window appears, goes or is activated.
class KWinWindows : public FrontmostSource {
public:
    /// KWin answers to its name before it takes scripts, and a starting desktop is slow: we ask again after
    /// `firstPause`, then after twice as long each time. A started script has `limit` for its first report.
    struct Patience {
        std::chrono::milliseconds firstPause{250};
        int attempts = 7;
        std::chrono::milliseconds limit = std::chrono::seconds(10);
    };

    /// `scriptFolder` is a folder of the user's that KWin can read too.
    KWinWindows(std::shared_ptr<SessionBus> bus, std::string scriptFolder, Patience patience);
    KWinWindows(std::shared_ptr<SessionBus> bus, std::string scriptFolder)
        : KWinWindows(std::move(bus), std::move(scriptFolder), Patience{}) {}
    KWinWindows(const KWinWindows&) = delete;
    KWinWindows& operator=(const KWinWindows&) = delete;
    ~KWinWindows() override;

    /// From the script's first report on, while this KWin lives.
    bool canTell() const override;
    std::optional<FrontWindow> inFront() const override;
    Subscription onChange(std::function<void()> changed) override;

    /// No KWin owns its name, or it took no script: nothing will be known unless another KWin appears.
    bool isAway() const;

    using IsMeant = std::function<bool(const FrontWindow& window)>;
    bool any(const IsMeant& isMeant) const;
    /// Closes them as a click on their close buttons would, a moment later. Returns how many are asked.
    std::size_t askToClose(const IsMeant& isMeant);

private:
    class Link;
    std::shared_ptr<Link> link_;
};

}  // namespace tolvane::linuxhost
