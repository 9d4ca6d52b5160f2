#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "base/Subscription.h"
#include "platform/linux/text/Environment.h"
#include "platform/linux/text/GLibOwned.h"

namespace tolvane::linuxhost {

/// What came of a call: a tuple, or the reason why there is none.
struct BusAnswer {
    /// The callee's until the call-back returns; null when the call failed.
    GVariant* value = nullptr;
    std::string error;
    /// The limit passed without an answer.
    bool timedOut = false;
};

/// What was told to all, the sender's until the call-back returns.
struct BusSignal {
    /// The unique name of whoever told it.
    const char* sender;
    const char* path;
    GVariant* arguments;
};

/// The user's message bus, or another one that is reached in the same way. Nothing here waits but `within`: calls
/// answer from the event loop, each within its limit, and a bus that is missing, silent or gone answers with an error.
/// Main thread; Qt's event loop drives it through GLib's main context, and nothing wakes while the bus is quiet.
///
/// A bus that dies is looked for again at its address: after a tenth of a second, then after twice as long each time,
/// twelve times in all, which is some seven minutes. After that the next call looks for it.
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
        /// A tuple; null for none.
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

    /// An empty address is no bus; one that does not answer within `connectLimit` is none either.
    explicit SessionBus(std::string address, std::chrono::milliseconds connectLimit = std::chrono::seconds(3));
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// DBUS_SESSION_BUS_ADDRESS, else the socket of the user's runtime folder; empty where there is none. A bus is
    /// never started for the question.
    static std::string usualAddress(const Environment& environment);

    bool hasAddress() const;
    /// With null when the bus cannot be reached. May call back at once.
    void whenConnected(Connected connected);
    void call(Call call, Answered answered);
    /// Tells of each connection that is made from now on, and with null that one was lost. What was given to the old
    /// one, names and objects, has to be given to the new one.
    Subscription onConnection(Connected connected);
    /// Lasts over a bus that goes and comes back.
    Subscription onSignal(Source source, Signalled signalled);

    /// Turns the event loop until the condition holds; false when it does not within the limit. For the start of a
    /// program, before anything else runs in that loop.
    static bool within(std::chrono::milliseconds limit, const std::function<bool()>& holds);

private:
    class State;
    std::shared_ptr<State> state_;
};

}  // namespace tolvane::linuxhost
