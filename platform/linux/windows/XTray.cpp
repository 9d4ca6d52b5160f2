#include "platform/linux/windows/XTray.h"

#include <utility>

namespace tolvane::linuxhost {

XTray::XTray(std::shared_ptr<XEvents> events, std::function<void()> changed)
    : events_(std::move(events)), changed_(std::move(changed)) {
    if (!events_->isThere()) return;
    selection_ = events_->atom("_NET_SYSTEM_TRAY_S0");
    announcement_ = events_->atom("MANAGER");
    news_ = events_->onEvent([this](const auto* event) { hear(event); });
    events_->listenTo(events_->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    look();
}

/// Listeners of the window learn of its end; it may have ended before we listened.
void XTray::look() {
    do {
        owner_ = events_->ownerOf(selection_);
        if (owner_ != 0) events_->listenTo(owner_, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    } while (owner_ != 0 && events_->ownerOf(selection_) != owner_);
}

bool XTray::concerns(const xcb_generic_event_t* event) const {
    const auto kind = event->response_type & 0x7FU;
    if (kind == XCB_CLIENT_MESSAGE) {
        const auto* news = reinterpret_cast<const xcb_client_message_event_t*>(event);
        return news->type == announcement_ && news->data.data32[1] == selection_;
    }
    if (kind != XCB_DESTROY_NOTIFY || owner_ == 0) return false;
    return reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == owner_;
}

void XTray::hear(const xcb_generic_event_t* event) {
    if (!concerns(event)) return;
    const bool was = present();
    look();
    if (present() != was) changed_();
}

}  // namespace tolvane::linuxhost
