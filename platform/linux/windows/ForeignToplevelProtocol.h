#pragma once

#include <wayland-client-core.h>

#include <cstdint>

namespace tolvane::linuxhost::ForeignToplevel {

/// The two interfaces of zwlr_foreign_toplevel_management_unstable_v1 at version 1, described as libwayland wants them.
/// No package of the distribution ships the protocol's file.
extern const wl_interface managerInterface;
extern const wl_interface handleInterface;

inline constexpr std::uint32_t version = 1;
inline constexpr std::uint32_t closeRequest = 5;
inline constexpr std::uint32_t destroyRequest = 7;
inline constexpr std::uint32_t activatedState = 2;

/// The manager's events, in the protocol's order.
struct ManagerListener {
    void (*toplevel)(void* data, wl_proxy* manager, wl_proxy* handle);
    void (*finished)(void* data, wl_proxy* manager);
};

/// A window's events. Its state holds only once `done` arrives.
struct HandleListener {
    void (*title)(void* data, wl_proxy* handle, const char* title);
    void (*application)(void* data, wl_proxy* handle, const char* application);
    void (*outputEnter)(void* data, wl_proxy* handle, wl_proxy* output);
    void (*outputLeave)(void* data, wl_proxy* handle, wl_proxy* output);
    void (*state)(void* data, wl_proxy* handle, wl_array* states);
    void (*done)(void* data, wl_proxy* handle);
    void (*closed)(void* data, wl_proxy* handle);
};

}  // namespace tolvane::linuxhost::ForeignToplevel
