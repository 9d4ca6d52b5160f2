#include "platform/linux/bus/SessionBus.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "platform/linux/FileDescriptor.h"
#include "tests/platform_linux/EventLoop.h"
#include "tests/platform_linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::PrivateBus;

/// What came of a call, once it has.
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

/// Takes connections and says nothing.
FileDescriptor mute(const std::string& path) {
    FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener.get(), 4), 0);
    return listener;
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

TEST(SessionBus, waitingEndsAtItsLimit) {
    EXPECT_FALSE(SessionBus::within(std::chrono::milliseconds(20), [] { return false; }));
    EXPECT_TRUE(SessionBus::within(std::chrono::seconds(5), [] { return true; }));
}

}  // namespace tolvane::linuxhost
