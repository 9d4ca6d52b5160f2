#include "platform/linux/bus/LinuxNotifications.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using testing::FakeService;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using testing::PrivateBus;
using ::testing::SizeIs;

constexpr const char* daemonInterface =
    "<node><interface name='org.freedesktop.Notifications'>"
    "<method name='GetCapabilities'><arg type='as' direction='out'/></method>"
    "<method name='Notify'><arg type='s' direction='in'/><arg type='u' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='as' direction='in'/>"
    "<arg type='a{sv}' direction='in'/><arg type='i' direction='in'/><arg type='u' direction='out'/></method>"
    "<signal name='ActionInvoked'><arg type='u'/><arg type='s'/></signal>"
    "<signal name='NotificationClosed'><arg type='u'/><arg type='u'/></signal>"
    "</interface></node>";

/// A notification daemon with the capabilities that the test sets.
class Daemon : public FakeService {
public:
    Daemon(const std::string& address, std::vector<std::string> capabilities, bool answers = true)
        : FakeService(address, "org.freedesktop.Notifications", "/org/freedesktop/Notifications", daemonInterface,
                      [this](const std::string& method) { return answer(method); }),
          capabilities_(std::move(capabilities)),
          answers_(answers) {}

    std::vector<std::string> shown() const { return argumentsOf("Notify"); }
    void click(std::uint32_t identifier) const { emit("ActionInvoked", g_variant_new("(us)", identifier, "default")); }
    void close(std::uint32_t identifier) const { emit("NotificationClosed", g_variant_new("(uu)", identifier, 2U)); }

private:
    GVariant* answer(const std::string& method) {
        if (!answers_) return nullptr;
        if (method == "Notify") return g_variant_new("(u)", ++last_);
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
        for (const auto& each : capabilities_) g_variant_builder_add(&list, "s", each.c_str());
        return g_variant_new("(as)", &list);
    }

    std::vector<std::string> capabilities_;
    bool answers_;
    std::uint32_t last_ = 0;
};

class LinuxNotificationsTest : public ::testing::Test {
protected:
    LinuxNotificationsTest() {
        clicks = notifications.onClick([this](const std::optional<std::string>& section) { told.push_back(section); });
    }

    /// The one call that arrives, as GLib prints it.
    std::string posted(const Notification& notification, const Daemon& daemon) {
        notifications.post(notification);
        EXPECT_TRUE(runUntil([&] { return !daemon.shown().empty(); }));
        return daemon.shown().empty() ? std::string() : daemon.shown().front();
    }

    PrivateBus bus;
    LinuxNotifications notifications{std::make_shared<SessionBus>(bus.address())};
    std::vector<std::optional<std::string>> told;
    Subscription clicks;
};

const Notification swap{
    .identifier = "1", .title = "Swap is growing fast", .body = "Up 1 GB. Most: <b> & co.", .section = "history"};

}  // namespace

TEST_F(LinuxNotificationsTest, titleAndBodyArriveWithADefaultAction) {
    const Daemon daemon(bus.address(), {"actions", "body"});
    const std::string call = posted(swap, daemon);
    EXPECT_THAT(call, HasSubstr("'Swap is growing fast', 'Up 1 GB. Most: <b> & co.', ['default', 'Open']"));
    EXPECT_THAT(call, HasSubstr("('Tolvane', 0, 'dev.tolvane.Tolvane'"));
    EXPECT_THAT(call, HasSubstr("'desktop-entry': <'dev.tolvane.Tolvane'>"));
}

TEST_F(LinuxNotificationsTest, thereIsNoSound) {
    const Daemon daemon(bus.address(), {"actions", "body", "sound"});
    const std::string call = posted(swap, daemon);
    EXPECT_THAT(call, HasSubstr("'suppress-sound': <true>"));
    EXPECT_THAT(call, Not(HasSubstr("sound-")));
}

TEST_F(LinuxNotificationsTest, aBodyIsEscapedWhereMarkupIsRead) {
    const Daemon daemon(bus.address(), {"actions", "body", "body-markup"});
    EXPECT_THAT(posted(swap, daemon), HasSubstr("'Up 1 GB. Most: &lt;b&gt; &amp; co.'"));
}

TEST_F(LinuxNotificationsTest, titlesAreNeverEscaped) {
    const Daemon daemon(bus.address(), {"body", "body-markup"});
    EXPECT_THAT(posted({.identifier = "1", .title = "a < b", .body = ""}, daemon), HasSubstr("'a < b', ''"));
}

TEST_F(LinuxNotificationsTest, whereThereIsNoBodyTheTitleHasItAll) {
    const Daemon daemon(bus.address(), {"actions"});
    EXPECT_THAT(posted(swap, daemon), HasSubstr("'Swap is growing fast: Up 1 GB. Most: <b> & co.', ''"));
}

TEST_F(LinuxNotificationsTest, noActionIsOfferedToADaemonWithout) {
    const Daemon daemon(bus.address(), {"body"});
    EXPECT_THAT(posted(swap, daemon), HasSubstr("co.', [], {"));
}

TEST_F(LinuxNotificationsTest, bytesThatAreNoTextArriveRepaired) {
    const Daemon daemon(bus.address(), {"body"});
    EXPECT_THAT(posted({.identifier = "1", .title = "a\xff", .body = "b\xfe"}, daemon),
                HasSubstr("'a\xEF\xBF\xBD', 'b\xEF\xBF\xBD'"));
}

TEST_F(LinuxNotificationsTest, eachStandsOnItsOwn) {
    const Daemon daemon(bus.address(), {"body"});
    notifications.post(swap);
    notifications.post(swap);
    EXPECT_TRUE(runUntil([&] { return daemon.shown().size() == 2; }));
    EXPECT_THAT(daemon.shown(), ::testing::Each(HasSubstr("('Tolvane', 0,")));
    EXPECT_THAT(daemon.argumentsOf("GetCapabilities"), SizeIs(1));
}

TEST_F(LinuxNotificationsTest, aClickTellsItsOwnSection) {
    const Daemon daemon(bus.address(), {"actions", "body"});
    notifications.post(swap);
    notifications.post({.identifier = "2", .title = "Memory is tight", .body = "", .section = "suggestions"});
    ASSERT_TRUE(runUntil([&] { return daemon.shown().size() == 2; }));
    daemon.click(2);
    daemon.click(1);
    EXPECT_TRUE(runUntil([&] { return told.size() == 2; }));
    EXPECT_THAT(told, ElementsAre(Optional(std::string("suggestions")), Optional(std::string("history"))));
}

TEST_F(LinuxNotificationsTest, aClickOnOneWithoutSectionTellsThat) {
    const Daemon daemon(bus.address(), {"actions", "body"});
    posted({.identifier = "1", .title = "Tolvane Rules", .body = "Imported."}, daemon);
    daemon.click(1);
    EXPECT_TRUE(runUntil([&] { return told.size() == 1; }));
    EXPECT_THAT(told, ElementsAre(std::nullopt));
}

TEST_F(LinuxNotificationsTest, clicksOnWhatIsNotOursOrClosedTellNothing) {
    const Daemon daemon(bus.address(), {"actions", "body"});
    posted(swap, daemon);
    daemon.close(1);
    daemon.click(1);
    daemon.click(77);
    daemon.emit("ActionInvoked", g_variant_new("(s)", "not the right arguments"));
    notifications.post(swap);
    ASSERT_TRUE(runUntil([&] { return daemon.shown().size() == 2; }));
    daemon.click(2);
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Optional(std::string("history"))));
}

TEST_F(LinuxNotificationsTest, anotherDaemonIsAskedAnewWhatItCanDo) {
    auto daemon = std::make_unique<Daemon>(bus.address(), std::vector<std::string>{"body", "body-markup"});
    posted(swap, *daemon);
    daemon.reset();
    const Daemon plain(bus.address(), {"body"});
    runFor(std::chrono::milliseconds(100));
    EXPECT_THAT(posted(swap, plain), HasSubstr("<b> & co."));
}

TEST_F(LinuxNotificationsTest, aDaemonThatNeverAnswersHoldsNobodyUp) {
    const Daemon daemon(bus.address(), {}, false);
    for (int count = 0; count < 1000; ++count) notifications.post(swap);
    EXPECT_TRUE(runUntil([&] { return !daemon.calls.empty(); }));
    runFor(std::chrono::milliseconds(50));
    EXPECT_THAT(daemon.calls, SizeIs(1));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(LinuxNotificationsTest, withoutADaemonTheyAreDropped) {
    notifications.post(swap);
    runFor(std::chrono::milliseconds(50));
    const Daemon daemon(bus.address(), {"body"});
    EXPECT_THAT(posted({.identifier = "2", .title = "later", .body = ""}, daemon), HasSubstr("'later'"));
    EXPECT_THAT(daemon.shown(), SizeIs(1));
}

TEST_F(LinuxNotificationsTest, aBusThatDiedIsUsedAgainWhenItIsBack) {
    auto daemon = std::make_unique<Daemon>(bus.address(), std::vector<std::string>{"body"});
    posted(swap, *daemon);
    bus.die();
    runFor(std::chrono::milliseconds(100));
    notifications.post(swap);
    runFor(std::chrono::milliseconds(50));
    daemon.reset();
    bus.start();
    const Daemon fresh(bus.address(), {"actions", "body"});
    const std::string call = posted({.identifier = "3", .title = "again", .body = "", .section = "rules"}, fresh);
    EXPECT_THAT(call, HasSubstr("'again'"));
    fresh.click(1);
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Optional(std::string("rules"))));
}

TEST(LinuxNotifications, withoutABusNothingHappens) {
    LinuxNotifications notifications(std::make_shared<SessionBus>(std::string()));
    notifications.post(swap);
    notifications.requestPermission();
    runFor(std::chrono::milliseconds(10));
    EXPECT_EQ(escapedMarkup("<a&b>"), "&lt;a&amp;b&gt;");
}

TEST(LinuxNotifications, canEndWhileAnAnswerIsDue) {
    const PrivateBus bus;
    const Daemon daemon(bus.address(), {"body"});
    {
        LinuxNotifications notifications(std::make_shared<SessionBus>(bus.address()));
        notifications.post(swap);
        const auto kept = notifications.onClick([](const auto&) {});
        runUntil([&] { return !daemon.calls.empty(); });
    }
    runFor(std::chrono::milliseconds(50));
    EXPECT_THAT(daemon.shown(), IsEmpty());
}

}  // namespace tolvane::linuxhost
