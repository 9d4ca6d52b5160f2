#include "platform/macos/applications/Launch.h"

#include "platform/macos/objc/Block.h"
#include "tests/fakes/VirtualClock.h"
#include "tests/platform/macos/FrameworksTest.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t openApplication = 0x6F617070;
constexpr std::uint32_t openDocuments = 0x6F646F63;
constexpr std::uint32_t asLoginItem = 0x6C676974;

class LaunchTest : public FrameworksTest {
protected:
    LaunchTest() {
        fake_.answer("defaultCenter", fake_.object("NSNotificationCenter", "center"));
        fake_.answer("mainQueue", fake_.object("NSOperationQueue", "main queue"));
        fake_.answer("sharedAppleEventManager", fake_.object("NSAppleEventManager", "events"));
        fake_.answer("addObserverForName:object:queue:usingBlock:", [this](const Message& message) -> Value {
            finished_ = fake_.copyOf(std::get<Id>(message.arguments[3]));
            return fake_.object("NSObject", "token");
        });
        launch_.emplace(fake_.runtime(), clock_, [this](bool atLogin) { told_.push_back(atLogin); });
    }
    /// Such an event launched the program; `how` is nullopt when the event does not say.
    void finish(std::uint32_t event, std::optional<std::uint32_t> how) {
        fake_.answer("currentAppleEvent", fake_.object("NSAppleEventDescriptor", "event"));
        fake_.answer("eventID", event);
        fake_.answer("paramDescriptorForKeyword:", how ? fake_.object("NSAppleEventDescriptor", "how") : Id{});
        fake_.answer("enumCodeValue", how.value_or(0));
        fake_.sent.clear();
        callBlock(finished_, Id{});
    }

    fakes::VirtualClock clock_;
    Id finished_ = nullptr;
    std::vector<bool> told_;
    std::optional<Launch> launch_;
};

TEST_F(LaunchTest, waitsForTheEndOfLaunching) {
    EXPECT_EQ(fake_.sent.back(),
              "[center addObserverForName:\"NSApplicationDidFinishLaunchingNotification\" object:nil queue:main queue "
              "usingBlock:block]");
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(LaunchTest, theFirstEventTellsOfTheLogin) {
    finish(openApplication, asLoginItem);
    EXPECT_THAT(told_, ElementsAre(true));
    EXPECT_THAT(fake_.sent,
                ElementsAre("[NSAppleEventManager sharedAppleEventManager]", "[events currentAppleEvent]",
                            "[event eventID]", "[event paramDescriptorForKeyword:prdt]", "[how enumCodeValue]"));
}

TEST_F(LaunchTest, aStartByAPersonIsNone) {
    finish(openApplication, std::nullopt);
    EXPECT_THAT(told_, ElementsAre(false));
}

TEST_F(LaunchTest, aFileThatWasOpenedIsNone) {
    finish(openDocuments, asLoginItem);
    EXPECT_THAT(told_, ElementsAre(false));
}

TEST_F(LaunchTest, withoutAnEventSomebodyStartedIt) {
    callBlock(finished_, Id{});
    EXPECT_THAT(told_, ElementsAre(false));
}

TEST_F(LaunchTest, newsThatDoNotComeAreNotWaitedForLong) {
    clock_.advance(Seconds{2});
    EXPECT_THAT(told_, IsEmpty());
    clock_.advance(Seconds{2});
    EXPECT_THAT(told_, ElementsAre(false));
}

TEST_F(LaunchTest, tellsOnce) {
    finish(openApplication, asLoginItem);
    clock_.advance(Seconds{10});
    callBlock(finished_, Id{});
    EXPECT_THAT(told_, ElementsAre(true));
}

TEST_F(LaunchTest, nobodyIsToldAfterTheEnd) {
    launch_.reset();
    EXPECT_EQ(fake_.sent.back(), "[center removeObserver:token]");
    clock_.advance(Seconds{10});
    EXPECT_THAT(told_, IsEmpty());
}

}  // namespace
}  // namespace tolvane::machost
