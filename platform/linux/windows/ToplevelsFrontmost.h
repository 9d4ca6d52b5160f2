#pragma once

#include <memory>

#include "platform/linux/windows/FrontmostSource.h"
#include "platform/linux/windows/WaylandToplevels.h"

namespace tolvane::linuxhost {

/// The activated window of a Wayland compositor that lists its windows. It knows applications, not processes.
class ToplevelsFrontmost : public FrontmostSource {
public:
    explicit ToplevelsFrontmost(std::shared_ptr<WaylandToplevels> toplevels) : toplevels_(std::move(toplevels)) {}

    bool canTell() const override { return toplevels_->isAlive(); }
    std::optional<FrontWindow> inFront() const override {
        auto application = toplevels_->activeApplication();
        if (!application) return std::nullopt;
        return FrontWindow{.names = {*std::move(application)}};
    }
    Subscription onChange(std::function<void()> changed) override { return toplevels_->onChange(std::move(changed)); }

private:
    std::shared_ptr<WaylandToplevels> toplevels_;
};

}  // namespace tolvane::linuxhost
