// A program with one window and a configurable habit, for testing how applications are asked to quit.
//   test-window HABIT
//     plain       ends when its window is closed
//     unsaved     asks about unsaved work instead, and keeps running
//     tray        hides its window and keeps running
//     stubborn    has a window that does not support close requests
//     windowless  has no window
// SIGTERM ends it in every case.

#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

struct Screen {
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = 0;

    xcb_atom_t name(std::string_view text) const {
        const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(text.size()), text.data());
        auto* reply = xcb_intern_atom_reply(connection, cookie, nullptr);
        const xcb_atom_t atom = reply == nullptr ? 0 : reply->atom;
        std::free(reply);
        return atom;
    }

    xcb_window_t open(std::string_view title, bool knowsClosing) const {
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 50, 50, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(title.size()), title.data());
        const xcb_atom_t closing = name("WM_DELETE_WINDOW");
        if (knowsClosing)
            xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, name("WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1,
                                &closing);
        xcb_map_window(connection, window);
        xcb_flush(connection);
        return window;
    }
};

}  // namespace

int main(int argc, char** argv) {
    const std::string habit = argc > 1 ? argv[1] : "plain";
    if (habit == "windowless") {
        while (true) ::pause();
    }
    Screen screen{.connection = xcb_connect(nullptr, nullptr)};
    if (xcb_connection_has_error(screen.connection) != 0) return 1;
    screen.root = xcb_setup_roots_iterator(xcb_get_setup(screen.connection)).data->root;
    const xcb_window_t window = screen.open(argc > 2 ? argv[2] : habit, habit != "stubborn");
    const xcb_atom_t closing = screen.name("WM_DELETE_WINDOW");
    while (xcb_generic_event_t* event = xcb_wait_for_event(screen.connection)) {
        const bool isMessage = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE;
        const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event);
        const bool isClosed = isMessage && message->data.data32[0] == closing && message->window == window;
        std::free(event);
        if (!isClosed) continue;
        if (habit == "plain") return 0;
        if (habit == "unsaved") screen.open("Save changes?", true);
        if (habit == "tray") xcb_unmap_window(screen.connection, window);
        xcb_flush(screen.connection);
    }
    return 0;
}
