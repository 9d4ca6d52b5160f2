#include "platform/linux/session/LinuxTrays.h"

#include <utility>

namespace tolvane::linuxhost {

LinuxTrays::LinuxTrays(std::shared_ptr<SessionBus> bus, std::shared_ptr<XEvents> events,
                       std::function<bool()> drawsOnX11)
    : bus_(std::move(bus)), events_(std::move(events)), drawsOnX11_(std::move(drawsOnX11)) {}

bool LinuxTrays::present() const { return (onBus_ && onBus_->present()) || (onServer_ && onServer_->present()); }

int LinuxTrays::place() const { return onBus_ ? onBus_->losses() : 0; }

Subscription LinuxTrays::onChange(std::function<void()> changed) {
    watch();
    return observers_.add(std::move(changed));
}

void LinuxTrays::watch() {
    if (onBus_) return;
    if (drawsOnX11_ && drawsOnX11_()) onServer_.emplace(events_, [this] { tell(); });
    told_ = present();
    onBus_.emplace(bus_, [this] { tell(); });
}

/// Losing one tray while the other stays changes nothing.
void LinuxTrays::tell() {
    const bool differs = told_ != present() || toldPlace_ != place();
    told_ = present();
    toldPlace_ = place();
    if (differs) observers_.tell();
}

}  // namespace tolvane::linuxhost
