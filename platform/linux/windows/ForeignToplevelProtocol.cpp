#include "platform/linux/windows/ForeignToplevelProtocol.h"

#include <wayland-client-protocol.h>

#include <array>

namespace tolvane::linuxhost::ForeignToplevel {

namespace {

std::array<const wl_interface*, 4> noTypes = {nullptr, nullptr, nullptr, nullptr};
std::array<const wl_interface*, 1> handleTypes = {&handleInterface};
std::array<const wl_interface*, 1> seatTypes = {&wl_seat_interface};
std::array<const wl_interface*, 1> outputTypes = {&wl_output_interface};
std::array<const wl_interface*, 5> rectangleTypes = {&wl_surface_interface, nullptr, nullptr, nullptr, nullptr};

const std::array<wl_message, 1> managerRequests = {{{.name = "stop", .signature = "", .types = noTypes.data()}}};
const std::array<wl_message, 2> managerEvents = {{
    {.name = "toplevel", .signature = "n", .types = handleTypes.data()},
    {.name = "finished", .signature = "", .types = noTypes.data()},
}};
const std::array<wl_message, 8> handleRequests = {{
    {.name = "set_maximized", .signature = "", .types = noTypes.data()},
    {.name = "unset_maximized", .signature = "", .types = noTypes.data()},
    {.name = "set_minimized", .signature = "", .types = noTypes.data()},
    {.name = "unset_minimized", .signature = "", .types = noTypes.data()},
    {.name = "activate", .signature = "o", .types = seatTypes.data()},
    {.name = "close", .signature = "", .types = noTypes.data()},
    {.name = "set_rectangle", .signature = "oiiii", .types = rectangleTypes.data()},
    {.name = "destroy", .signature = "", .types = noTypes.data()},
}};
const std::array<wl_message, 7> handleEvents = {{
    {.name = "title", .signature = "s", .types = noTypes.data()},
    {.name = "app_id", .signature = "s", .types = noTypes.data()},
    {.name = "output_enter", .signature = "o", .types = outputTypes.data()},
    {.name = "output_leave", .signature = "o", .types = outputTypes.data()},
    {.name = "state", .signature = "a", .types = noTypes.data()},
    {.name = "done", .signature = "", .types = noTypes.data()},
    {.name = "closed", .signature = "", .types = noTypes.data()},
}};

}  // namespace

const wl_interface managerInterface = {
    .name = "zwlr_foreign_toplevel_manager_v1",
    .version = version,
    .method_count = managerRequests.size(),
    .methods = managerRequests.data(),
    .event_count = managerEvents.size(),
    .events = managerEvents.data(),
};
const wl_interface handleInterface = {
    .name = "zwlr_foreign_toplevel_handle_v1",
    .version = version,
    .method_count = handleRequests.size(),
    .methods = handleRequests.data(),
    .event_count = handleEvents.size(),
    .events = handleEvents.data(),
};

}  // namespace tolvane::linuxhost::ForeignToplevel
