#include "platform/linux/bus/SessionBus.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "base/files/FileDescriptor.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::PrivateBus;

/// The result of a call, once there is one.
struct Answered {
    bool hasValue = false;
    std::string error;
    bool timedOut = false;
};

std::optional<Answered> ask(SessionBus& bus, SessionBus::Call call, std::chrono::milliseconds limit) {
    std::optional<Answered> came;
    bus.call(std::move(call), [&](const BusAnswer& answer) {
        came = Answered{.hasValue = answer.value != nullptr, .error = answer.error, .timedOut = answer.timedOut};
    });
    runUntil([&] { return came.has_value(); }, limit);
    return came;
}

SessionBus::Call listNames(const std::string& destination = "org.freedesktop.DBus") {
    return {.destination = destination,
            .path = "/org/freedesktop/DBus",
            .interface = "org.freedesktop.DBus",
            .method = "ListNames",
            .arguments = nullptr};
}

/// Accepts connections and never answers.
FileDescriptor mute(const std::string& path) {
    FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener.get(), 4), 0);
    return listener;
}

/// Closes the connection of whatever has connected; false when nothing has.
bool hasSentAway(const FileDescriptor& door) {
    pollfd waiting{.fd = door.get(), .events = POLLIN, .revents = 0};
    if (::poll(&waiting, 1, 0) != 1) return false;
    return FileDescriptor(::accept(door.get(), nullptr, nullptr)).get() >= 0;
}

}  // namespace

TEST(SessionBus, theAddressIsTheVariablesElseTheRuntimeFoldersSocket) {
    const TemporaryFolder folder;
    EXPECT_EQ(SessionBus::usualAddress(environmentOf({{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/x"}})), "unix:path=/x");
    EXPECT_EQ(SessionBus::usualAddress(environmentOf({{"XDG_RUNTIME_DIR", folder.path()}})), "");
    EXPECT_EQ(SessionBus::usualAddress(environmentOf({})), "");
    const FileDescriptor socket = mute(folder.at("bus"));
    EXPECT_EQ(SessionBus::usualAddress(environmentOf({{"XDG_RUNTIME_DIR", folder.path()}})),
              "unix:path=" + folder.at("bus"));
}

TEST(SessionBus, answersComeFromTheToolkitsEventLoop) {
    const PrivateBus daemon;
    SessionBus bus(daemon.address());
    const auto answer = ask(bus, listNames(), std::chrono::seconds(5));
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->hasValue);
}

TEST(SessionBus, aNameThatNobodyHasIsAnError) {
    const PrivateBus daemon;
    SessionBus bus(daemon.address());
    const auto answer = ask(bus, listNames("org.example.Nobody"), std::chrono::seconds(5));
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->hasValue);
    EXPECT_THAT(answer->error, HasSubstr("org.example.Nobody"));
}

TEST(SessionBus, aCallEndsAtItsLimit) {
    const PrivateBus daemon;
    const testing::FakeService silent(daemon.address(), "org.example.Silent", "/x",
                                      "<node><interface name='org.example.X'><method name='Ask'/></interface></node>",
                                      [](const std::string&) { return nullptr; });
    SessionBus bus(daemon.address());
    SessionBus::Call call{.destination = "org.example.Silent",
                          .path = "/x",
                          .interface = "org.example.X",
                          .method = "Ask",
                          .arguments = nullptr,
                          .limit = std::chrono::milliseconds(100)};
    const auto answer = ask(bus, std::move(call), std::chrono::seconds(5));
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->timedOut);
}

TEST(SessionBus, aBusThatSaysNothingIsNone) {
    const TemporaryFolder folder;
    const FileDescriptor socket = mute(folder.at("bus"));
    SessionBus bus("unix:path=" + folder.at("bus"), std::chrono::milliseconds(100));
    const auto answer = ask(bus, listNames(), std::chrono::seconds(5));
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->hasValue);
    EXPECT_FALSE(answer->error.empty());
}

TEST(SessionBus, noBusAnswersWithAnError) {
    SessionBus none{std::string()};
    EXPECT_FALSE(none.hasAddress());
    ASSERT_TRUE(ask(none, listNames(), std::chrono::seconds(1)));
    SessionBus gone("unix:path=/nowhere/bus");
    const auto answer = ask(gone, listNames(), std::chrono::seconds(5));
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->hasValue);
    SessionBus nonsense("this is no address");
    ASSERT_TRUE(ask(nonsense, listNames(), std::chrono::seconds(5)));
}

TEST(SessionBus, aBusThatDiesAnswersWhatIsUnderWayWithAnError) {
    PrivateBus daemon;
    const testing::FakeService silent(daemon.address(), "org.example.Silent", "/x",
                                      "<node><interface name='org.example.X'><method name='Ask'/></interface></node>",
                                      [](const std::string&) { return nullptr; });
    SessionBus bus(daemon.address());
    bool isDead = false;
    bool isAnswered = false;
    bus.call({.destination = "org.example.Silent",
              .path = "/x",
              .interface = "org.example.X",
              .method = "Ask",
              .arguments = nullptr},
             [&](const BusAnswer& answer) { isAnswered = isDead && answer.value == nullptr; });
    runUntil([&] { return !silent.calls.empty(); });
    daemon.die();
    isDead = true;
    EXPECT_TRUE(runUntil([&] { return isAnswered; }));
    daemon.start();
    const auto answer = ask(bus, listNames(), std::chrono::seconds(5));
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->hasValue);
}

TEST(SessionBus, aBusThatDiedIsLookedForUntilItIsBack) {
    PrivateBus daemon;
    SessionBus bus(daemon.address());
    std::vector<bool> connections;
    int signals = 0;
    const auto kept = bus.onConnection([&](GDBusConnection* each) { connections.push_back(each != nullptr); });
    const auto heard = bus.onSignal({.sender = {}, .interface = "org.example.X", .member = "Said", .path = {}},
                                    [&](const BusSignal&) { ++signals; });
    bus.whenConnected([](GDBusConnection*) {});
    EXPECT_TRUE(runUntil([&] { return connections.size() == 1; }));
    for (int round = 1; round <= 2; ++round) {
        daemon.die();
        EXPECT_TRUE(runUntil([&] { return !connections.back(); }));
        daemon.start();
        EXPECT_TRUE(runUntil([&] { return connections.back(); }));
        const testing::FakeService other(
            daemon.address(), "org.example.Other", "/x",
            "<node><interface name='org.example.X'><signal name='Said'/></interface></node>",
            [](const std::string&) { return nullptr; });
        EXPECT_TRUE(runUntil([&] {
            other.emit("Said", nullptr);
            return signals >= round;
        }));
    }
    EXPECT_THAT(connections, ::testing::ElementsAre(true, false, true, false, true));
}

TEST(SessionBus, aBusThatWasNeverThereIsNotLookedFor) {
    const TemporaryFolder folder;
    SessionBus bus("unix:path=" + folder.at("bus"));
    std::vector<bool> connections;
    const auto kept = bus.onConnection([&](GDBusConnection* each) { connections.push_back(each != nullptr); });
    EXPECT_FALSE(ask(bus, listNames(), std::chrono::seconds(5))->hasValue);
    const FileDescriptor socket = mute(folder.at("bus"));
    runFor(std::chrono::milliseconds(300));
    EXPECT_THAT(connections, IsEmpty());
    EXPECT_FALSE(hasSentAway(socket));
}

TEST(SessionBus, aBusThatStaysAwayIsLookedForLessAndLess) {
    PrivateBus daemon;
    SessionBus bus(daemon.address());
    bus.whenConnected([](GDBusConnection*) {});
    EXPECT_TRUE(ask(bus, listNames(), std::chrono::seconds(5))->hasValue);
    daemon.die();
    const std::string path = daemon.address().substr(std::string("unix:path=").size());
    const FileDescriptor door = mute(path);
    int knocks = 0;
    QElapsedTimer elapsed;
    elapsed.start();
    runUntil(
        [&] {
            knocks += hasSentAway(door) ? 1 : 0;
            return false;
        },
        std::chrono::milliseconds(1800));
    EXPECT_GE(knocks, 2);
    EXPECT_LE(knocks, 5) << "after 100, 300, 700 and 1500 milliseconds, and a little later each";
    ::unlink(path.c_str());
}

TEST(SessionBus, waitingEndsAtItsLimit) {
    EXPECT_FALSE(SessionBus::within(std::chrono::milliseconds(20), [] { return false; }));
    EXPECT_TRUE(SessionBus::within(std::chrono::seconds(5), [] { return true; }));
}

}  // namespace tolvane::linuxhost
