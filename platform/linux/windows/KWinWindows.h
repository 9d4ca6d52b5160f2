#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/windows/FrontmostSource.h"

namespace tolvane::linuxhost {

/// The windows of a session of KWin, and which of them is active: a script of ours runs inside of KWin and reports over
/// the session bus. It is loaded into each KWin that comes, one that was started again included, and unloaded at the
/// end of this. Nothing wakes while no window comes, goes or is activated.
class KWinWindows : public FrontmostSource {
public:
    /// KWin answers to its name before it takes scripts, and a desktop that starts is slow: it is asked again after
    /// `firstPause`, then after twice as long each time. A script that was started has `limit` for its first word.
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

    /// Nobody answers to KWin's name, or it took no script: this will not tell unless another KWin comes.
    bool isAway() const;

    using IsMeant = std::function<bool(const FrontWindow& window)>;
    bool any(const IsMeant& isMeant) const;
    /// As clicks on their close buttons, a moment later. How many are asked.
    std::size_t askToClose(const IsMeant& isMeant);

private:
    class Link;
    std::shared_ptr<Link> link_;
};

}  // namespace tolvane::linuxhost
