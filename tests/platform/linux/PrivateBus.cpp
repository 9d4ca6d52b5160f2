#include "tests/platform/linux/PrivateBus.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

#include "base/files/FileDescriptor.h"

#include "tests/platform/linux/Child.h"

namespace tolvane::linuxhost::testing {

namespace {

/// The socket's file exists before anything listens on it.
bool listens(const std::string& path) {
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

void PrivateBus::start() {
    const std::string config =
        folder_.write("bus.conf",
                      "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN' "
                      "'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>\n"
                      "<busconfig><type>session</type><listen>" +
                          address() +
                          "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                          "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>\n");
    const std::string option = "--config-file=" + config;
    pid_ = ::fork();
    if (pid_ == 0) {
        // It reports limits that do not matter here.
        ::close(STDERR_FILENO);
        ::execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nosyslog", option.c_str(), nullptr);
        ::_exit(127);
    }
    EXPECT_TRUE(eventually([this] { return listens(folder_.at("bus")); }));
}

void PrivateBus::die() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
    ::unlink(folder_.at("bus").c_str());
    pid_ = 0;
}

FakeService::FakeService(const std::string& address, const std::string& name, std::string path,
                         const std::string& description, Answer answer)
    : path_(std::move(path)), answer_(std::move(answer)) {
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection_.reset(g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
    const GLibOwned<GDBusNodeInfo> node(g_dbus_node_info_new_for_xml(description.c_str(), nullptr));
    if (!connection_ || !node) {
        ADD_FAILURE() << "no bus, or no description";
        return;
    }
    interface_ = node->interfaces[0]->name;
    static constexpr GDBusInterfaceVTable table = {
        .method_call = called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    for (GDBusInterfaceInfo** each = node->interfaces; *each != nullptr; ++each) {
        registrations_.push_back(
            g_dbus_connection_register_object(connection_.get(), path_.c_str(), *each, &table, this, nullptr, nullptr));
    }
    const Variant taken(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", name.c_str(), 4U), nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr));
    EXPECT_TRUE(taken);
}

FakeService::~FakeService() {
    if (!connection_) return;
    for (const unsigned each : registrations_) g_dbus_connection_unregister_object(connection_.get(), each);
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void FakeService::called(GDBusConnection*, const char*, const char*, const char*, const char* method,
                         GVariant* arguments, GDBusMethodInvocation* invocation, void* data) {
    auto* self = static_cast<FakeService*>(data);
    self->calls.push_back({.method = method, .arguments = textOf(g_variant_print(arguments, FALSE))});
    // The object that keeps an unanswered invocation owns it.
    GVariant* answer = self->answer_(method);
    if (answer == nullptr) return g_object_unref(invocation);
    g_dbus_method_invocation_return_value(invocation, answer);
}

std::vector<std::string> FakeService::argumentsOf(const std::string& method) const {
    std::vector<std::string> found;
    for (const Call& call : calls) {
        if (call.method == method) found.push_back(call.arguments);
    }
    return found;
}

void FakeService::emit(const std::string& signal, GVariant* arguments) const {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, path_.c_str(), interface_.c_str(), signal.c_str(),
                                  arguments, nullptr);
}

void FakeService::call(const SessionBus::Call& call) const {
    g_dbus_connection_call(connection_.get(), call.destination.c_str(), call.path.c_str(), call.interface.c_str(),
                           call.method.c_str(), call.arguments.get(), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
                           nullptr, nullptr);
}

}  // namespace tolvane::linuxhost::testing
