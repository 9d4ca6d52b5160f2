#include "platform/macos/applications/MacApplications.h"

#include "platform/macos/applications/MacFrontmost.h"
#include "platform/macos/applications/MacRunningApplications.h"
#include "platform/macos/objc/Block.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/macos/FrameworksTest.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

class MacApplicationsTest : public FrameworksTest {
protected:
    fakes::TemporaryFolder folder_;
    MacApplications applications_{fake_.runtime(), folder_ / "icons"};
};

TEST_F(MacApplicationsTest, theOutermostBundleOwnsAnExecutable) {
    EXPECT_THAT(applications_.appPath(42, "/Applications/A.app/Contents/Frameworks/B.app/Contents/MacOS/B"),
                Optional(Text("/Applications/A.app")));
    EXPECT_FALSE(applications_.appPath(42, "/opt/bin/node"));
    EXPECT_FALSE(applications_.appPath(42, "/opt/bin/my.app"));
    EXPECT_THAT(fake_.sent, IsEmpty());
}

TEST_F(MacApplicationsTest, theBundleTellsItsIdentifier) {
    const Id bundle = fake_.object("NSBundle", "bundle");
    fake_.at(bundle).owners = 1;
    fake_.answer("initWithPath:", [&](const Message& message) -> Value {
        fake_.at(message.receiver).owners = 0;
        return bundle;
    });
    fake_.answer("bundleIdentifier", fake_.text("com.example.Editor"));
    EXPECT_THAT(applications_.appID("/Applications/Editor.app"), Optional(Text("com.example.Editor")));
    EXPECT_THAT(fake_.sent,
                ElementsAre("[new NSBundle initWithPath:\"/Applications/Editor.app\"]", "[bundle bundleIdentifier]"));
}

TEST_F(MacApplicationsTest, aFolderThatIsNoBundleHasNoIdentifier) {
    fake_.answer("initWithPath:", [&](const Message& message) -> Value {
        fake_.at(message.receiver).owners = 0;
        return Id{};
    });
    EXPECT_FALSE(applications_.appID("/nowhere"));
}

TEST_F(MacApplicationsTest, namesAreTheFileManagersWithoutTheSuffix) {
    fake_.answer("defaultManager", fake_.object("NSFileManager", "files"));
    fake_.answer("displayNameAtPath:", fake_.text("Text.app Editor.app"));
    EXPECT_EQ(applications_.displayName("/Applications/Editor.app"), "Text Editor");
    EXPECT_THAT(fake_.sent, ElementsAre("[NSFileManager defaultManager]",
                                        "[files displayNameAtPath:\"/Applications/Editor.app\"]"));
}

TEST_F(MacApplicationsTest, aNameThatTheFileManagerDoesNotGiveIsEmpty) {
    EXPECT_EQ(applications_.displayName("/Applications/Editor.app"), "");
}

class MacIconsTest : public MacApplicationsTest {
protected:
    MacIconsTest() {
        fake_.answer("sharedWorkspace", fake_.object("NSWorkspace", "workspace"));
        fake_.answer("iconForFile:", fake_.object("NSImage", "icon"));
        fake_.answer("CGImageForProposedRect:context:hints:", [this](const Message& message) -> Value {
            const auto* area = static_cast<const double*>(std::get<void*>(message.arguments[0]));
            EXPECT_THAT(std::vector(area, area + 4), ElementsAre(0, 0, 64, 64));
            return fake_.object("CGImage", "drawing");
        });
        fake_.answer("initWithCGImage:", [](const Message& message) -> Value { return message.receiver; });
        fake_.answer("representationUsingType:properties:", fake_.object("NSData", "png"));
        fake_.answer("writeToFile:atomically:", true);
    }
    std::string picture_ = folder_ / "icons/_2FA_2Fb_2Eapp.png";
};

TEST_F(MacIconsTest, anIconBecomesAPicture) {
    EXPECT_EQ(applications_.iconName("/A/b.app"), picture_);
    EXPECT_TRUE(std::filesystem::is_directory(folder_ / "icons"));
    EXPECT_THAT(fake_.sent, ElementsAre("[NSWorkspace sharedWorkspace]", "[workspace iconForFile:\"/A/b.app\"]",
                                        "[icon CGImageForProposedRect:pointer context:nil hints:nil]",
                                        "[new NSBitmapImageRep initWithCGImage:drawing]", "[NSDictionary dictionary]",
                                        "[new NSBitmapImageRep representationUsingType:4 properties:dictionary]",
                                        "[png writeToFile:\"" + picture_ + "\" atomically:YES]"));
}

TEST_F(MacIconsTest, noIconAndNoWritingGiveNoName) {
    fake_.answer("writeToFile:atomically:", false);
    EXPECT_EQ(applications_.iconName("/A/b.app"), "");
    fake_.answer("CGImageForProposedRect:context:hints:", Id{});
    EXPECT_EQ(applications_.iconName("/A/b.app"), "");
}

TEST_F(MacIconsTest, aVeryLongPathKeepsItsEnd) {
    const auto name = applications_.iconName("/" + std::string(3000, 'a') + "Z");
    EXPECT_EQ(std::filesystem::path(name).filename().native().size(), 204U);
    EXPECT_TRUE(name.ends_with("aZ.png"));
}

class MacRunningApplicationsTest : public FrameworksTest {
protected:
    MacRunningApplicationsTest() {
        fake_.answer("sharedWorkspace", fake_.object("NSWorkspace", "workspace"));
        fake_.answer("configuration", fake_.object("NSWorkspaceOpenConfiguration", "configuration"));
    }

    MacRunningApplications running_{fake_.runtime(), onMain()};
};

TEST_F(MacRunningApplicationsTest, givesEveryInstanceOfAnIdentifier) {
    const Id first = fake_.object("NSRunningApplication", "first");
    const Id second = fake_.object("NSRunningApplication", "second");
    fake_.answer("runningApplicationsWithBundleIdentifier:", fake_.array({first, second}));
    fake_.answer("bundleURL", [&](const Message& message) -> Value {
        return message.receiver == first ? fake_.url("/Applications/A.app") : Id{};
    });
    const auto found = running_.withAppID("com.example.A");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0]->appPath(), "/Applications/A.app");
    EXPECT_EQ(found[1]->appPath(), std::nullopt);
    EXPECT_EQ(fake_.sent[0], "[NSRunningApplication runningApplicationsWithBundleIdentifier:\"com.example.A\"]");
    EXPECT_EQ(fake_.at(first).owners, 1);
}

TEST_F(MacRunningApplicationsTest, asksPolitelyForciblyAndWhetherItIsOver) {
    fake_.answer("runningApplicationsWithBundleIdentifier:",
                 fake_.array({fake_.object("NSRunningApplication", "app")}));
    fake_.answer("terminate", true);
    fake_.answer("isTerminated", true);
    const auto found = running_.withAppID("com.example.A");
    fake_.sent.clear();
    found.at(0)->terminate();
    EXPECT_TRUE(found.at(0)->isTerminated());
    fake_.answer("isTerminated", false);
    EXPECT_FALSE(found.at(0)->isTerminated());
    found.at(0)->forceTerminate();
    EXPECT_THAT(fake_.sent,
                ElementsAre("[app terminate]", "[app isTerminated]", "[app isTerminated]", "[app forceTerminate]"));
}

TEST_F(MacRunningApplicationsTest, noInstancesGiveTheEmptyList) {
    EXPECT_THAT(running_.withAppID("com.example.A"), IsEmpty());
}

TEST_F(MacRunningApplicationsTest, opensInTheBackgroundWithoutAsking) {
    running_.openInBackground("/Applications/A.app", [](const auto&) {});
    EXPECT_THAT(fake_.sent,
                ElementsAre("[NSWorkspace sharedWorkspace]", "[NSWorkspaceOpenConfiguration configuration]",
                            "[configuration setPromptsUserIfNeeded:NO]", "[configuration setActivates:NO]",
                            "[configuration setAddsToRecentItems:NO]",
                            "[workspace openApplicationAtURL:url /Applications/A.app configuration:configuration "
                            "completionHandler:block]"));
}

TEST_F(MacRunningApplicationsTest, tellsOnTheMainThreadWhatCameOfIt) {
    Id handler = nullptr;
    fake_.answer("openApplicationAtURL:configuration:completionHandler:", [&](const Message& message) -> Value {
        handler = fake_.copyOf(std::get<Id>(message.arguments[2]));
        return {};
    });
    std::vector<std::optional<std::string>> told;
    running_.openInBackground("/Applications/A.app", [&](auto error) { told.push_back(std::move(error)); });
    const Id error = fake_.object("NSError", "error");
    fake_.at(error).text = "The application is damaged.";
    callBlock(handler, fake_.object("NSRunningApplication", "app"), Id{});
    callBlock(handler, Id{}, error);
    EXPECT_THAT(told, IsEmpty());
    runMain();
    EXPECT_THAT(told, ElementsAre(std::nullopt, "The application is damaged."));
}

class MacFrontmostTest : public FrameworksTest {
protected:
    MacFrontmostTest() {
        fake_.answer("sharedWorkspace", fake_.object("NSWorkspace", "workspace"));
        fake_.answer("notificationCenter", fake_.object("NSNotificationCenter", "center"));
        fake_.answer("mainQueue", fake_.object("NSOperationQueue", "main queue"));
    }

    MacFrontmost frontmost_{fake_.runtime()};
};

TEST_F(MacFrontmostTest, theWorkspaceKnowsWhoIsInFront) {
    fake_.answer("frontmostApplication", fake_.object("NSRunningApplication", "app"));
    fake_.answer("bundleURL", fake_.url("/Applications/A.app"));
    EXPECT_TRUE(frontmost_.canTell());
    EXPECT_THAT(frontmost_.current(), Optional(FrontmostApplication{.appPath = "/Applications/A.app"}));
    fake_.answer("bundleIdentifier", fake_.text("com.example.A"));
    EXPECT_EQ(frontmost_.current()->appID, "com.example.A");
}

TEST_F(MacFrontmostTest, nobodyAndAProgramWithoutBundleAreNone) {
    EXPECT_FALSE(frontmost_.current());
    fake_.answer("frontmostApplication", fake_.object("NSRunningApplication", "app"));
    EXPECT_FALSE(frontmost_.current());
}

TEST_F(MacFrontmostTest, tellsWhoComesToTheFrontUntilItIsEnded) {
    Id handler = nullptr;
    fake_.answer("addObserverForName:object:queue:usingBlock:", [&](const Message& message) -> Value {
        handler = fake_.copyOf(std::get<Id>(message.arguments[3]));
        return fake_.object("NSObject", "token");
    });
    std::vector<std::string> came;
    auto subscription = frontmost_.onActivation([&](std::string path) { came.push_back(std::move(path)); });
    EXPECT_EQ(fake_.sent.back(),
              "[center addObserverForName:\"NSWorkspaceDidActivateApplicationNotification\" object:nil "
              "queue:main queue usingBlock:block]");
    const Id app = fake_.object("NSRunningApplication", "app");
    const Id notification = fake_.object("NSNotification", "notification");
    fake_.answer("userInfo", fake_.dictionary({{"NSWorkspaceApplicationKey", app}}));
    fake_.answer("bundleURL", fake_.url("/Applications/A.app"));
    callBlock(handler, notification);
    EXPECT_THAT(came, ElementsAre("/Applications/A.app"));
    subscription.reset();
    EXPECT_EQ(fake_.sent.back(), "[center removeObserver:token]");
}

TEST_F(MacFrontmostTest, aNotificationWithAPartMissingIsDropped) {
    Id handler = nullptr;
    fake_.answer("addObserverForName:object:queue:usingBlock:", [&](const Message& message) -> Value {
        handler = fake_.copyOf(std::get<Id>(message.arguments[3]));
        return Id{};
    });
    const auto subscription = frontmost_.onActivation([](const std::string& path) { ADD_FAILURE() << path; });
    const Id notification = fake_.object("NSNotification", "notification");
    callBlock(handler, notification);
    fake_.answer("userInfo", fake_.dictionary({}));
    callBlock(handler, notification);
    fake_.answer("userInfo",
                 fake_.dictionary({{"NSWorkspaceApplicationKey", fake_.object("NSRunningApplication", "app")}}));
    callBlock(handler, notification);
}

}  // namespace
}  // namespace tolvane::machost
