#include "platform/linux/windows/XDisplay.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <span>

#include "platform/linux/windows/XReply.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::array propertyNames = {
    std::string_view("_NET_ACTIVE_WINDOW"), std::string_view("_NET_CLIENT_LIST"),
    std::string_view("_NET_SUPPORTED"),     std::string_view("_NET_SUPPORTING_WM_CHECK"),
    std::string_view("_NET_WM_PID"),        std::string_view("WM_PROTOCOLS"),
    std::string_view("WM_DELETE_WINDOW"),
};
/// In 32-bit units; nobody has more windows than that open.
constexpr std::uint32_t longestProperty = 65536;

}  // namespace

std::unique_ptr<XDisplay> XDisplay::connect(const std::string& name) {
    if (name.empty()) return nullptr;
    int screen = 0;
    xcb_connection_t* connection = xcb_connect(name.c_str(), &screen);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0 && roots.rem > 1; --screen) xcb_screen_next(&roots);
    return std::unique_ptr<XDisplay>(new XDisplay(connection, roots.data->root));
}

XDisplay::XDisplay(xcb_connection_t* connection, Window root) : connection_(connection), root_(root) {
    lookUpNames();
    if (!hasExtension("X-Resource")) return;
    const auto version =
        owned(xcb_res_query_version_reply(connection_, xcb_res_query_version(connection_, 1, 2), nullptr));
    knowsOwners_ = version && (version->server_major > 1 || version->server_minor >= 2);
}

XDisplay::~XDisplay() { xcb_disconnect(connection_); }

void XDisplay::lookUpNames() {
    std::array<xcb_intern_atom_cookie_t, nameCount> asked{};
    for (std::size_t index = 0; index < nameCount; ++index) {
        const auto name = propertyNames[index];
        asked[index] = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t index = 0; index < nameCount; ++index) {
        const auto reply = owned(xcb_intern_atom_reply(connection_, asked[index], nullptr));
        names_[index] = reply ? reply->atom : 0;
    }
}

bool XDisplay::hasExtension(std::string_view name) const {
    const auto cookie = xcb_query_extension(connection_, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = owned(xcb_query_extension_reply(connection_, cookie, nullptr));
    return reply && reply->present != 0;
}

int XDisplay::descriptor() const { return xcb_get_file_descriptor(connection_); }

bool XDisplay::isAlive() const { return xcb_connection_has_error(connection_) == 0; }

bool XDisplay::isGuest() const { return hasExtension("XWAYLAND"); }

std::vector<std::uint32_t> XDisplay::numbers(Window window, Name property) const {
    const auto cookie =
        xcb_get_property(connection_, 0, window, names_[property], XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

/// The check window names itself while its window manager lives.
bool XDisplay::tellsActive() const {
    const auto check = numbers(root_, supportingCheck);
    if (check.empty() || numbers(check.front(), supportingCheck) != check) return false;
    const auto offers = numbers(root_, supported);
    return std::ranges::find(offers, names_[activeWindow]) != offers.end();
}

std::optional<XDisplay::Window> XDisplay::active() const {
    const auto window = numbers(root_, activeWindow);
    if (window.empty() || window.front() == 0) return std::nullopt;
    return window.front();
}

void XDisplay::watchActive() {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection_);
}

bool XDisplay::readEvents() {
    bool changed = false;
    while (const auto event = owned(xcb_poll_for_event(connection_))) {
        if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY) continue;
        const auto* notice = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        changed = changed || notice->atom == names_[activeWindow] || notice->atom == names_[supportingCheck];
    }
    return changed;
}

std::vector<XDisplay::Window> XDisplay::windows() const {
    return tellsActive() ? numbers(root_, clientList) : topLevelWindows();
}

std::vector<XDisplay::Window> XDisplay::topLevelWindows() const {
    const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
    if (!tree) return {};
    const std::span<const Window> all(xcb_query_tree_children(tree.get()),
                                      static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    std::vector<Window> shown;
    for (const Window window : all) {
        const auto cookie = xcb_get_window_attributes(connection_, window);
        const auto facts = owned(xcb_get_window_attributes_reply(connection_, cookie, nullptr));
        const bool isShown = facts && facts->map_state == XCB_MAP_STATE_VIEWABLE && facts->override_redirect == 0;
        if (isShown) shown.push_back(window);
    }
    return shown;
}

/// The server's own record of the connection, which a sandboxed program cannot get wrong.
std::optional<Pid> XDisplay::ownerByConnection(Window window) const {
    const xcb_res_client_id_spec_t question{.client = window, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = owned(
        xcb_res_query_client_ids_reply(connection_, xcb_res_query_client_ids(connection_, 1, &question), nullptr));
    if (!reply) return std::nullopt;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        const auto& [kind, length] = *ids.data;
        const bool isPid = (kind.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isPid && length >= 4) return static_cast<Pid>(*xcb_res_client_id_value_value(ids.data));
    }
    return std::nullopt;
}

std::optional<Pid> XDisplay::owner(Window window) const {
    if (knowsOwners_) return ownerByConnection(window);
    const auto claimed = numbers(window, processID);
    if (claimed.empty() || claimed.front() == 0) return std::nullopt;
    return static_cast<Pid>(claimed.front());
}

bool XDisplay::askToClose(Window window) {
    const auto understood = numbers(window, protocols);
    if (std::ranges::find(understood, names_[deleteWindow]) == understood.end()) return false;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = names_[protocols];
    message.data.data32[0] = names_[deleteWindow];
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    return xcb_flush(connection_) > 0;
}

}  // namespace tolvane::linuxhost
