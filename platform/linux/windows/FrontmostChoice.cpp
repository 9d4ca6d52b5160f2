#include "platform/linux/windows/FrontmostChoice.h"

#include <initializer_list>
#include <utility>

#include "platform/linux/windows/ToplevelsFrontmost.h"
#include "platform/linux/windows/X11Frontmost.h"

namespace tolvane::linuxhost {

FrontmostChoice::FrontmostChoice(std::shared_ptr<WindowSession> session, std::shared_ptr<SessionBus> bus,
                                 std::string scriptFolder)
    : session_(std::move(session)), bus_(std::move(bus)), scriptFolder_(std::move(scriptFolder)) {}

void FrontmostChoice::begin() {
    if (std::exchange(hasBegun_, true)) return;
    if (auto toplevels = session_->wayland()) {
        server_ = std::make_unique<ToplevelsFrontmost>(std::move(toplevels));
    } else if (session_->isWayland()) {
        beginOnBus();
    } else if (session_->x11() != nullptr) {
        server_ = std::make_unique<X11Frontmost>(session_);
    }
}

void FrontmostChoice::beginOnBus() {
    if (!bus_->hasAddress()) return;
    kwin_ = std::make_unique<KWinFrontmost>(bus_, scriptFolder_);
    ofKWin_ = kwin_->onChange([this] {
        updateOnBus();
        observers_.tell();
    });
    updateOnBus();
}

void FrontmostChoice::updateOnBus() {
    if (kwin_->isAway() == (accessibility_ != nullptr)) return;
    if (!kwin_->isAway()) {
        ofAccessibility_.reset();
        return accessibility_.reset();
    }
    accessibility_ = std::make_unique<AccessibilityFrontmost>(bus_);
    ofAccessibility_ = accessibility_->onChange([this] { observers_.tell(); });
}

const FrontmostSource* FrontmostChoice::teller() {
    begin();
    const std::initializer_list<const FrontmostSource*> inOrder = {server_.get(), kwin_.get(), accessibility_.get()};
    for (const FrontmostSource* each : inOrder) {
        if (each != nullptr && each->canTell()) return each;
    }
    return nullptr;
}

Subscription FrontmostChoice::onChange(std::function<void()> changed) {
    begin();
    if (server_ && observers_.empty()) ofServer_ = server_->onChange([this] { observers_.tell(); });
    return observers_.add(std::move(changed));
}

}  // namespace tolvane::linuxhost
