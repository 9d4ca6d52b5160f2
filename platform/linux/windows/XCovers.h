#pragma once

#include <memory>
#include <set>

#include "base/Observers.h"
#include "platform/WindowCovers.h"
#include "platform/linux/windows/XEvents.h"

namespace tolvane::linuxhost {

/// The X server reports when a window is completely covered, unless a compositor keeps every window's contents.
class XCovers : public WindowCovers {
public:
    /// `drawsOnX11` returns whether the program's windows belong to the server; asked for each window.
    XCovers(std::shared_ptr<XEvents> events, std::function<bool()> drawsOnX11);

    bool watch(Window window) override;
    void forget(Window window) override;
    bool isCovered(Window window) const override { return covered_.contains(window); }
    Subscription onChange(std::function<void()> changed) override { return observers_.add(std::move(changed)); }

private:
    void hear(const xcb_generic_event_t* event);

    std::shared_ptr<XEvents> events_;
    std::function<bool()> drawsOnX11_;
    std::set<Window> watched_;
    std::set<Window> covered_;
    Observers<> observers_;
    Subscription news_;
};

}  // namespace tolvane::linuxhost
