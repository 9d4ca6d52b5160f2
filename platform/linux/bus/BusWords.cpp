#include "platform/linux/bus/BusWords.h"

namespace tolvane::linuxhost::BusWords {

namespace {

constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* path = "/org/freedesktop/DBus";

SessionBus::Call question(const char* method, const std::string& name) {
    return {.destination = bus,
            .path = path,
            .interface = bus,
            .method = method,
            .arguments = taken(g_variant_new("(s)", name.c_str())),
            .limit = std::chrono::seconds(5)};
}

}  // namespace

SessionBus::Source ownerChanges(const std::string& name) {
    return {.sender = bus, .interface = bus, .member = "NameOwnerChanged", .path = path, .firstArgument = name};
}

std::string newOwner(GVariant* arguments) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)")) == FALSE) return {};
    const char* owner = nullptr;
    g_variant_get(arguments, "(&s&s&s)", nullptr, nullptr, &owner);
    return owner;
}

SessionBus::Call ownerOf(const std::string& name) { return question("GetNameOwner", name); }

SessionBus::Call processOf(const std::string& name) { return question("GetConnectionUnixProcessID", name); }

std::string textIn(GVariant* answer) {
    if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(s)")) == FALSE) return {};
    const char* text = nullptr;
    g_variant_get(answer, "(&s)", &text);
    return text;
}

}  // namespace tolvane::linuxhost::BusWords
