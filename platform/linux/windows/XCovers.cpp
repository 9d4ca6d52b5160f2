#include "platform/linux/windows/XCovers.h"

#include <utility>

namespace tolvane::linuxhost {

XCovers::XCovers(std::shared_ptr<XEvents> events, std::function<bool()> drawsOnX11)
    : events_(std::move(events)), drawsOnX11_(std::move(drawsOnX11)) {
    news_ = events_->onEvent([this](const auto* event) { hear(event); });
}

bool XCovers::watch(Window window) {
    if (!drawsOnX11_ || !drawsOnX11_() || !events_->isThere()) return false;
    events_->listenTo(static_cast<XEvents::Window>(window), XCB_EVENT_MASK_VISIBILITY_CHANGE);
    watched_.insert(window);
    return true;
}

void XCovers::forget(Window window) {
    watched_.erase(window);
    covered_.erase(window);
}

void XCovers::hear(const xcb_generic_event_t* event) {
    if ((event->response_type & 0x7FU) != XCB_VISIBILITY_NOTIFY) return;
    const auto* news = reinterpret_cast<const xcb_visibility_notify_event_t*>(event);
    if (!watched_.contains(news->window)) return;
    const bool isCovered = news->state == XCB_VISIBILITY_FULLY_OBSCURED;
    if (isCovered == covered_.contains(news->window)) return;
    if (isCovered) {
        covered_.insert(news->window);
    } else {
        covered_.erase(news->window);
    }
    observers_.tell();
}

}  // namespace tolvane::linuxhost
