#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/text/GLibOwned.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost::testing {

/// A message bus for one test. It can die and be started again at the same address.
class PrivateBus {
public:
    PrivateBus() { start(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() { die(); }

    std::string address() const { return "unix:path=" + folder_.at("bus"); }
    void start();
    void die();

private:
    TemporaryFolder folder_;
    int pid_ = 0;
};

/// A program on the bus that owns a name and answers as the test says.
class FakeService {
public:
    struct Call {
        std::string method;
        /// As GLib prints values.
        std::string arguments;

        bool operator==(const Call&) const = default;
    };
    /// The answer's tuple; null never answers.
    using Answer = std::function<GVariant*(const std::string& method)>;

    /// `description` is one or more interfaces in the bus's own markup; signals belong to the first.
    FakeService(const std::string& address, const std::string& name, std::string path, const std::string& description,
                Answer answer);
    FakeService(const FakeService&) = delete;
    FakeService& operator=(const FakeService&) = delete;
    ~FakeService();

    std::vector<Call> calls;
    std::vector<std::string> argumentsOf(const std::string& method) const;
    void emit(const std::string& signal, GVariant* arguments) const;
    /// Calls another program without waiting for the result.
    void call(const SessionBus::Call& call) const;

private:
    static void called(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, void* data);

    GObjectOwned<GDBusConnection> connection_;
    std::string path_;
    std::string interface_;
    Answer answer_;
    std::vector<unsigned> registrations_;
};

}  // namespace tolvane::linuxhost::testing
