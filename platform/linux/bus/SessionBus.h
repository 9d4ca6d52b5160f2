#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "base/Subscription.h"
#include "platform/linux/text/Environment.h"
#include "platform/linux/text/GLibOwned.h"

namespace tolvane::linuxhost {

/// The result of a call: a tuple, or why there is none.
struct BusAnswer {
    /// Owned by the caller of the callback until it returns; null when the call failed.
    GVariant* value = nullptr;
    std::string error;
    /// No answer within the limit.
    bool timedOut = false;
};

/// A signal; owned by the caller of the callback until it returns.
struct BusSignal {
    /// The sender's unique name.
    const char* sender;
    const char* path;
    GVariant* arguments;
};

/// The user's message bus, or another one reached the same way. Only `within` and `answerTo` block: calls are answered
/// from the event loop, each within its limit, and a missing, silent or dead bus answers with an error. Main thread;
/// Qt's event loop drives it through GLib's main context, and nothing wakes while the bus is quiet. A bus that dies is
/// looked for again at its address: after a tenth of a second, then after twice as long each time, twelve times in all,
/// about seven minutes. After that the next call looks for it.
class SessionBus {
public:
    using Connected = std::function<void(GDBusConnection* connection)>;
    using Answered = std::function<void(const BusAnswer& answer)>;
    using Signalled = std::function<void(const BusSignal& signal)>;

    struct Call {
        std::string destination;
        std::string path;
        std::string interface;
        std::string method;
        /// A tuple, or null for no arguments.
        Variant arguments;
        std::chrono::milliseconds limit = std::chrono::seconds(10);
        /// The bus may start the program that answers to the name.
        bool mayStart = true;
    };
    struct Source {
        std::string sender;
        std::string interface;
        std::string member;
        std::string path;
        /// The first argument, where it matters.
        std::string firstArgument = {};
    };

    /// An empty address, or a bus that does not answer within `connectLimit`, counts as no bus.
    explicit SessionBus(std::string address, std::chrono::milliseconds connectLimit = std::chrono::seconds(3));
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// DBUS_SESSION_BUS_ADDRESS, else the socket in the user's runtime folder; empty without either. Never starts a
    /// bus.
    static std::string usualAddress(const Environment& environment);

    bool hasAddress() const;
    /// Calls back with null when the bus cannot be reached. May call back at once.
    void whenConnected(Connected connected);
    void call(Call call, Answered answered);
    /// Waits for the answer within the call's limit, without running the event loop. Null when the call fails, or while
    /// no bus is connected.
    Variant answerTo(const Call& call) const;
    /// Reports each connection made from now on, and null when one is lost. Names and objects of the old connection
    /// must be registered on the new one.
    Subscription onConnection(Connected connected);
    /// Survives a bus that goes away and comes back.
    Subscription onSignal(Source source, Signalled signalled);

    /// Runs the event loop until the condition holds; false when it does not within the limit. For program start,
    /// before anything else runs in that loop.
    static bool within(std::chrono::milliseconds limit, const std::function<bool()>& holds);

private:
    class State;
    std::shared_ptr<State> state_;
};

}  // namespace tolvane::linuxhost
