#pragma once

#include <memory>

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/windows/FrontmostSource.h"

namespace tolvane::linuxhost {

/// The program whose window was activated last, as programs report it to screen readers. Works only where the user has
/// switched accessibility on; this class does not switch it on. Programs that do not speak to screen readers are
/// invisible, so between one window's deactivation and the next activation the answer is unknown.
class AccessibilityFrontmost : public FrontmostSource {
public:
    explicit AccessibilityFrontmost(std::shared_ptr<SessionBus> bus);
    AccessibilityFrontmost(const AccessibilityFrontmost&) = delete;
    AccessibilityFrontmost& operator=(const AccessibilityFrontmost&) = delete;
    ~AccessibilityFrontmost() override;

    bool canTell() const override;
    std::optional<FrontWindow> inFront() const override;
    Subscription onChange(std::function<void()> changed) override;

private:
    class Link;
    std::shared_ptr<Link> link_;
};

}  // namespace tolvane::linuxhost
