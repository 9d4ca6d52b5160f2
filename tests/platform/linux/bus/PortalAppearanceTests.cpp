#include "platform/linux/bus/PortalAppearance.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>

#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using testing::FakeService;
using testing::PrivateBus;

/// A settings portal that runs in a thread of its own, as another program would.
class Portal {
public:
    explicit Portal(const std::string& address) : thread_([this, address] { run(address); }) {
        while (!runs_) std::this_thread::yield();
    }
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;
    ~Portal() {
        ends_ = true;
        thread_.join();
    }

    void announce(const char* space, const char* key, unsigned value) const {
        service_->emit("SettingChanged", g_variant_new("(ssv)", space, key, g_variant_new_uint32(value)));
    }

    std::atomic<unsigned> colorScheme = 0;
    /// The way of old portals.
    std::atomic<bool> wrapsTwice = true;

private:
    void run(const std::string& address) {
        GMainContext* context = g_main_context_new();
        g_main_context_push_thread_default(context);
        service_.emplace(address, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                         "<node><interface name='org.freedesktop.portal.Settings'>"
                         "<method name='Read'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
                         "<arg type='v' direction='out'/></method>"
                         "<signal name='SettingChanged'><arg type='s'/><arg type='s'/><arg type='v'/></signal>"
                         "</interface></node>",
                         [this](const std::string&) { return answer(); });
        runs_ = true;
        while (!ends_) {
            g_main_context_iteration(context, FALSE);
            std::this_thread::yield();
        }
        service_.reset();
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
    }
    /// The last argument tells which key was asked for.
    GVariant* answer() const {
        const bool scheme = service_->calls.back().arguments.ends_with("'color-scheme')");
        GVariant* value = g_variant_new_uint32(scheme ? colorScheme.load() : 0);
        return g_variant_new("(v)", wrapsTwice ? g_variant_new_variant(value) : value);
    }

    std::atomic<bool> runs_ = false;
    std::atomic<bool> ends_ = false;
    std::optional<FakeService> service_;
    std::thread thread_;
};

class PortalAppearanceTest : public ::testing::Test {
protected:
    /// On a bus that is connected, as it is once the program has looked for another start.
    PortalAppearance onConnectedBus() {
        auto session = std::make_shared<SessionBus>(bus.address());
        bool connected = false;
        session->whenConnected([&](GDBusConnection*) { connected = true; });
        EXPECT_TRUE(runUntil([&] { return connected; }));
        return PortalAppearance(std::move(session));
    }

    PrivateBus bus;
};

TEST_F(PortalAppearanceTest, withoutABusOrAPortalNothingIsKnown) {
    EXPECT_EQ(PortalAppearance(nullptr).current(), AppearanceWishes{});
    EXPECT_EQ(PortalAppearance(std::make_shared<SessionBus>("")).current(), AppearanceWishes{});
    EXPECT_EQ(onConnectedBus().current(), AppearanceWishes{});
}

TEST_F(PortalAppearanceTest, aRunningPortalIsHeardBeforeTheFirstWindow) {
    Portal portal(bus.address());
    portal.colorScheme = 1;
    EXPECT_EQ(onConnectedBus().current().dark, true);
    portal.colorScheme = 2;
    EXPECT_EQ(onConnectedBus().current().dark, false);
    portal.wrapsTwice = false;
    EXPECT_EQ(onConnectedBus().current().dark, false);
}

TEST_F(PortalAppearanceTest, aLateAnswerArrivesAsAChange) {
    Portal portal(bus.address());
    portal.colorScheme = 1;
    PortalAppearance appearance(std::make_shared<SessionBus>(bus.address()));
    AppearanceWishes latest;
    const auto changes = appearance.onChange([&](const AppearanceWishes& wishes) { latest = wishes; });
    EXPECT_EQ(appearance.current(), AppearanceWishes{});
    EXPECT_TRUE(runUntil([&] { return latest.dark == true; }));
    EXPECT_EQ(appearance.current(), latest);
}

TEST_F(PortalAppearanceTest, changesArriveWhileTheProgramRuns) {
    Portal portal(bus.address());
    auto appearance = onConnectedBus();
    AppearanceWishes latest;
    const auto changes = appearance.onChange([&](const AppearanceWishes& wishes) { latest = wishes; });
    EXPECT_EQ(appearance.current(), AppearanceWishes{});
    constexpr const char* space = "org.freedesktop.appearance";
    const auto announce = [&](const char* key, unsigned value, auto holds) {
        // The subscription by the portal's name begins once the bus has said who owns it.
        return runUntil([&] {
            portal.announce(space, key, value);
            return holds();
        });
    };
    EXPECT_TRUE(announce("color-scheme", 1, [&] { return latest.dark == true; }));
    EXPECT_TRUE(announce("contrast", 1, [&] { return latest.highContrast; }));
    EXPECT_TRUE(announce("color-scheme", 2, [&] { return latest.dark == false && latest.highContrast; }));
    EXPECT_TRUE(announce("reduced-motion", 1, [&] { return latest.reducedMotion; }));
    portal.announce("org.example.other", "color-scheme", 1);
    portal.announce(space, "color-scheme", 0);
    EXPECT_TRUE(announce("reduced-motion", 0, [&] { return !latest.reducedMotion; }));
    EXPECT_EQ(latest.dark, false);
}

}  // namespace

}  // namespace tolvane::linuxhost
