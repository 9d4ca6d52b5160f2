#pragma once

#include <string>
#include <utility>

#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost::testing {

inline constexpr const char* launcherWords =
    "<node><interface name='org.freedesktop.DBus.Properties'>"
    "<method name='GetAll'><arg type='s' direction='in'/><arg type='a{sv}' direction='out'/></method>"
    "<signal name='PropertiesChanged'><arg type='s'/><arg type='a{sv}'/><arg type='as'/></signal></interface>"
    "<interface name='org.a11y.Bus'><method name='GetAddress'><arg type='s' direction='out'/></method></interface>"
    "</node>";
inline constexpr const char* registryWords =
    "<node><interface name='org.a11y.atspi.Registry'><method name='RegisterEvent'><arg type='s' direction='in'/>"
    "<arg type='as' direction='in'/><arg type='s' direction='in'/></method></interface></node>";
inline constexpr const char* windowWords =
    "<node><interface name='org.a11y.atspi.Event.Window'>"
    "<signal name='Activate'><arg type='s'/><arg type='i'/><arg type='i'/><arg type='v'/><arg type='a{sv}'/></signal>"
    "<signal name='Deactivate'><arg type='s'/><arg type='i'/><arg type='i'/><arg type='v'/><arg type='a{sv}'/></signal>"
    "</interface></node>";

inline GVariant* statusWith(bool isEnabled) {
    GVariantBuilder known;
    g_variant_builder_init(&known, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&known, "{sv}", "IsEnabled", g_variant_new_boolean(isEnabled ? TRUE : FALSE));
    g_variant_builder_add(&known, "{sv}", "ScreenReaderEnabled", g_variant_new_boolean(FALSE));
    return g_variant_builder_end(&known);
}

/// The session's part: whether accessibility is on, and where its bus is.
class Launcher {
public:
    Launcher(const PrivateBus& session, std::string address, bool enabled)
        : isEnabled(enabled),
          service(session.address(), "org.a11y.Bus", "/org/a11y/bus", launcherWords,
                  [this, address = std::move(address)](const std::string& method) {
                      return method == "GetAll" ? g_variant_new("(@a{sv})", statusWith(isEnabled))
                                                : g_variant_new("(s)", address.c_str());
                  }) {}

    void set(bool enabled) {
        isEnabled = enabled;
        service.emit("PropertiesChanged", g_variant_new("(s@a{sv}@as)", "org.a11y.Status", statusWith(enabled),
                                                        g_variant_new_strv(nullptr, 0)));
    }

    bool isEnabled;
    FakeService service;
};

/// Where listeners register the events they want.
class Registry : public FakeService {
public:
    explicit Registry(const PrivateBus& bus)
        : FakeService(bus.address(), "org.a11y.atspi.Registry", "/org/a11y/atspi/registry", registryWords,
                      [](const std::string&) { return g_variant_new("()"); }) {}
};

/// A program with one window that reports its activations to screen readers.
class Speaker {
public:
    Speaker(const PrivateBus& bus, const std::string& name, const std::string& path = "/window")
        : service_(bus.address(), name, path, windowWords, [](const std::string&) { return nullptr; }) {}

    void say(const char* event) const {
        service_.emit(event, g_variant_new("(siiv@a{sv})", "", 0, 0, g_variant_new_string("title"),
                                           g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)));
    }

private:
    FakeService service_;
};

}  // namespace tolvane::linuxhost::testing
