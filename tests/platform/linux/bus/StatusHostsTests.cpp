#include "platform/linux/bus/StatusHosts.h"

#include <gmock/gmock.h>

#include <optional>

#include "platform/linux/session/LinuxTrays.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using testing::FakeService;
using testing::PrivateBus;

class StatusHostsTest : public ::testing::Test {
protected:
    /// A watcher appears on the bus.
    void come() {
        service.emplace(bus.address(), "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                        "<node><interface name='org.kde.StatusNotifierWatcher'>"
                        "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
                        "<signal name='StatusNotifierHostRegistered'/><signal name='StatusNotifierHostUnregistered'/>"
                        "</interface></node>",
                        [this](const std::string&) { return g_variant_new("(v)", answer()); });
    }
    GVariant* answer() const {
        return answersInWords ? g_variant_new_string("yes") : g_variant_new_boolean(hasHost ? TRUE : FALSE);
    }
    void setHost(bool present) {
        hasHost = present;
        service->emit(present ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", nullptr);
    }

    PrivateBus bus;
    std::shared_ptr<SessionBus> session = std::make_shared<SessionBus>(bus.address());
    std::optional<FakeService> service;
    bool hasHost = true;
    bool answersInWords = false;
    int told = 0;
};

}  // namespace

TEST_F(StatusHostsTest, aHostThatIsThereIsFound) {
    come();
    const StatusHosts hosts(session, [this] { ++told; });
    EXPECT_TRUE(runUntil([&] { return hosts.present(); }));
    EXPECT_EQ(told, 1);
    EXPECT_THAT(service->argumentsOf("Get"),
                ElementsAre("('org.kde.StatusNotifierWatcher', 'IsStatusNotifierHostRegistered')"));
}

TEST_F(StatusHostsTest, aWatcherWithoutAHostIsNone) {
    hasHost = false;
    come();
    const StatusHosts hosts(session, [this] { ++told; });
    EXPECT_TRUE(runUntil([&] { return !service->calls.empty(); }));
    runFor(std::chrono::milliseconds(50));
    EXPECT_FALSE(hosts.present());
    EXPECT_EQ(told, 0);
    setHost(true);
    EXPECT_TRUE(runUntil([&] { return hosts.present(); }));
    setHost(false);
    EXPECT_TRUE(runUntil([&] { return !hosts.present(); }));
    EXPECT_EQ(told, 2);
}

TEST_F(StatusHostsTest, aHostMayComeLateGoAndComeBack) {
    const StatusHosts hosts(session, [this] { ++told; });
    runFor(std::chrono::milliseconds(50));
    EXPECT_FALSE(hosts.present());
    come();
    EXPECT_TRUE(runUntil([&] { return hosts.present(); }));
    service.reset();
    EXPECT_TRUE(runUntil([&] { return !hosts.present(); }));
    come();
    EXPECT_TRUE(runUntil([&] { return hosts.present(); }));
    EXPECT_EQ(told, 3);
}

TEST_F(StatusHostsTest, aBusThatTakesThePlaceOfAnotherIsAskedAnewAndIsAnotherPlace) {
    come();
    LinuxTrays trays(session, std::make_shared<XEvents>(""), nullptr);
    const auto listening = trays.onChange([this] { ++told; });
    EXPECT_TRUE(runUntil([&] { return trays.present(); }));
    const int place = trays.place();
    service.reset();
    EXPECT_TRUE(runUntil([&] { return !trays.present(); }));
    EXPECT_EQ(trays.place(), place) << "the bus is the same";
    come();
    EXPECT_TRUE(runUntil([&] { return trays.present(); }));
    bus.die();
    EXPECT_TRUE(runUntil([&] { return !trays.present(); }));
    EXPECT_NE(trays.place(), place);
    service.reset();
    bus.start();
    come();
    EXPECT_TRUE(runUntil([&] { return trays.present(); }));
    EXPECT_EQ(told, 5);
}

TEST_F(StatusHostsTest, anAnswerOfAnotherTypeIsNone) {
    answersInWords = true;
    come();
    const StatusHosts hosts(session, [this] { ++told; });
    EXPECT_TRUE(runUntil([&] { return !service->calls.empty(); }));
    runFor(std::chrono::milliseconds(50));
    EXPECT_FALSE(hosts.present());
}

TEST_F(StatusHostsTest, anAnswerAfterTheEndIsDropped) {
    come();
    {
        const StatusHosts hosts(session, [this] { ++told; });
    }
    runFor(std::chrono::milliseconds(100));
    EXPECT_EQ(told, 0);
}

TEST_F(StatusHostsTest, withoutABusThereIsNone) {
    const StatusHosts nowhere(std::make_shared<SessionBus>(""), [this] { ++told; });
    const StatusHosts without(nullptr, [this] { ++told; });
    EXPECT_FALSE(nowhere.present());
    EXPECT_FALSE(without.present());
}

TEST_F(StatusHostsTest, aPlaceForIconsIsLookedForFromTheFirstListenerOn) {
    come();
    LinuxTrays trays(session, std::make_shared<XEvents>(""), nullptr);
    runFor(std::chrono::milliseconds(50));
    EXPECT_THAT(service->calls, ::testing::IsEmpty());
    const auto listening = trays.onChange([this] { ++told; });
    EXPECT_TRUE(runUntil([&] { return trays.present(); }));
    EXPECT_EQ(told, 1);
}

}  // namespace tolvane::linuxhost
