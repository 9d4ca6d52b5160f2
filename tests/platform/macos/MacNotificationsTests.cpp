#include "platform/macos/session/MacNotifications.h"

#include "platform/macos/objc/Block.h"
#include "tests/platform/macos/FrameworksTest.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacNotificationsTest : public FrameworksTest {
protected:
    MacNotificationsTest() {
        fake_.answer("mainBundle", fake_.object("NSBundle", "bundle"));
        fake_.answer("bundleIdentifier", fake_.text("dev.tolvane.Tolvane"));
        fake_.answer("currentNotificationCenter", fake_.object("UNUserNotificationCenter", "center"));
        fake_.answer("requestWithIdentifier:content:trigger:", fake_.object("UNNotificationRequest", "request"));
    }
    ~MacNotificationsTest() override {
        notifications_.reset();
        EXPECT_THAT(fake_.madeClasses, IsEmpty());
    }

    MacNotifications& notifications() {
        if (!notifications_) notifications_ = std::make_unique<MacNotifications>(fake_.runtime(), onMain());
        return *notifications_;
    }
    Id method(const std::string& selector) { return fake_.madeClasses.begin()->second.blocks.at(selector); }
    /// The user clicks; `section` is what the notification carries.
    void click(Id section) {
        fake_.answer("notification", fake_.object("UNNotification", "notification"));
        fake_.answer("request", fake_.object("UNNotificationRequest", "request"));
        fake_.answer("content", fake_.object("UNNotificationContent", "content"));
        fake_.answer("userInfo", section == nullptr ? Id{} : fake_.dictionary({{"section", section}}));
        Block<> done(*fake_.runtime(), [this] { ++answered_; });
        const Id receive = method("userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:");
        const Id response = fake_.object("UNNotificationResponse", "response");
        callBlock(receive, Id{}, Id{}, response, done.get());
    }

    int answered_ = 0;
    std::unique_ptr<MacNotifications> notifications_;
};

TEST_F(MacNotificationsTest, becomesTheCentersDelegateAndLeavesAtTheEnd) {
    notifications();
    ASSERT_EQ(fake_.madeClasses.size(), 1U);
    const auto& delegate = fake_.madeClasses.begin()->second;
    EXPECT_EQ(delegate.name, "TolvaneNotificationDelegate");
    EXPECT_TRUE(delegate.registered);
    for (const auto& [selector, types] : delegate.types) EXPECT_EQ(types, "v@:@@@?") << selector;
    EXPECT_EQ(fake_.sent.back(), "[center setDelegate:new TolvaneNotificationDelegate]");
    notifications_.reset();
    EXPECT_EQ(fake_.sent.back(), "[center setDelegate:nil]");
    EXPECT_THAT(fake_.madeClasses, IsEmpty());
}

TEST_F(MacNotificationsTest, postsAtOnceWithoutSound) {
    fake_.sent.clear();
    notifications();
    fake_.sent.clear();
    notifications().post({.identifier = "ID-1", .title = "Quit Editor", .body = "It was idle.", .section = "activity"});
    EXPECT_THAT(fake_.sent, ElementsAre("[UNMutableNotificationContent new]",
                                        "[new UNMutableNotificationContent setTitle:\"Quit Editor\"]",
                                        "[new UNMutableNotificationContent setBody:\"It was idle.\"]",
                                        "[NSDictionary dictionaryWithObject:\"activity\" forKey:\"section\"]",
                                        "[new UNMutableNotificationContent setUserInfo:{\"section\": \"activity\"}]",
                                        "[UNNotificationRequest requestWithIdentifier:\"ID-1\" content:new "
                                        "UNMutableNotificationContent trigger:nil]",
                                        "[UNUserNotificationCenter currentNotificationCenter]",
                                        "[center addNotificationRequest:request withCompletionHandler:nil]"));
}

TEST_F(MacNotificationsTest, withoutASectionThereAreNoDetails) {
    notifications().post({.identifier = "ID-1", .title = "Tolvane Rules", .body = "Added 1 rule."});
    EXPECT_THAT(fake_.sent, Not(::testing::Contains(::testing::HasSubstr("setUserInfo"))));
}

TEST_F(MacNotificationsTest, asksForAlertsAndSounds) {
    notifications().requestPermission();
    EXPECT_EQ(fake_.sent.back(), "[center requestAuthorizationWithOptions:6 completionHandler:block]");
}

TEST_F(MacNotificationsTest, theAnswerIsTakenAndDropped) {
    Id handler = nullptr;
    fake_.answer("requestAuthorizationWithOptions:completionHandler:", [&](const Message& message) -> Value {
        handler = fake_.copyOf(std::get<Id>(message.arguments[1]));
        return {};
    });
    notifications().requestPermission();
    callBlock(handler, true, Id{});
    EXPECT_THAT(jobs_, IsEmpty());
}

TEST_F(MacNotificationsTest, whatArrivesWhileInFrontIsShownAsBannerAndInTheList) {
    notifications();
    std::vector<std::uint64_t> options;
    Block<std::uint64_t> present(*fake_.runtime(), [&](std::uint64_t chosen) { options.push_back(chosen); });
    callBlock(method("userNotificationCenter:willPresentNotification:withCompletionHandler:"), Id{}, Id{}, Id{},
              present.get());
    EXPECT_THAT(options, ElementsAre(24U));
}

TEST_F(MacNotificationsTest, aClickComesToTheMainThreadWithItsSection) {
    std::vector<std::optional<std::string>> clicks;
    const auto subscription = notifications().onClick([&](auto section) { clicks.push_back(std::move(section)); });
    click(fake_.text("history"));
    EXPECT_EQ(answered_, 1);
    EXPECT_THAT(clicks, IsEmpty());
    runMain();
    EXPECT_THAT(clicks, ElementsAre("history"));
}

TEST_F(MacNotificationsTest, aClickWithoutASectionOrWithAnotherTypeHasNone) {
    std::vector<std::optional<std::string>> clicks;
    const auto subscription = notifications().onClick([&](auto section) { clicks.push_back(std::move(section)); });
    click(nullptr);
    click(fake_.number("number 1", std::int64_t{1}));
    runMain();
    EXPECT_THAT(clicks, ElementsAre(std::nullopt, std::nullopt));
    EXPECT_EQ(answered_, 2);
}

TEST_F(MacNotificationsTest, nobodyIsToldAfterTheEnd) {
    auto subscription = notifications().onClick([](const auto&) { ADD_FAILURE(); });
    click(fake_.text("history"));
    subscription.reset();
    runMain();
    auto another = notifications().onClick([](const auto&) { ADD_FAILURE(); });
    click(fake_.text("history"));
    notifications_.reset();
    runMain();
}

TEST_F(MacNotificationsTest, outsideOfABundleTheCenterIsLeftAlone) {
    fake_.answer("bundleIdentifier", Id{});
    notifications().post({.identifier = "ID-1", .title = "Title", .body = "Body", .section = std::nullopt});
    notifications().requestPermission();
    EXPECT_THAT(fake_.sent, ElementsAre("[NSBundle mainBundle]", "[bundle bundleIdentifier]"));
}

}  // namespace
}  // namespace tolvane::machost
