#include "platform/linux/bus/SingleInstance.h"

#include <gmock/gmock.h>

#include "platform/linux/bus/BusWords.h"
#include "platform/linux/bus/SessionBus.h"
#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using Outcome = SingleInstance::Outcome;
using Request = SingleInstance::Request;
using testing::FakeService;
using testing::PrivateBus;

constexpr std::chrono::milliseconds limit = std::chrono::seconds(5);

class SingleInstanceTest : public ::testing::Test {
protected:
    std::unique_ptr<SingleInstance> instance() const {
        return std::make_unique<SingleInstance>(std::make_shared<SessionBus>(bus.address()));
    }
    void listen(SingleInstance& to) {
        subscription = to.onRequest([this](Request request) { told.push_back(std::move(request)); });
    }

    bool hasName() const {
        SessionBus other(bus.address());
        std::optional<std::string> owner;
        other.call(BusWords::ownerOf(SingleInstance::usualName),
                   [&](const BusAnswer& answer) { owner = BusWords::textIn(answer.value); });
        runUntil([&] { return owner.has_value(); });
        return owner && !owner->empty();
    }

    PrivateBus bus;
    std::vector<Request> told;
    Subscription subscription;
};

}  // namespace

TEST_F(SingleInstanceTest, aLaterOneHandsItsFilesOverAndIsDone) {
    const auto first = instance();
    EXPECT_EQ(first->settle({}, {}, limit), Outcome::first);
    listen(*first);
    EXPECT_EQ(instance()->settle({.files = {"/a b.tolvanerules", "/c"}}, "token", limit), Outcome::handedOver);
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Request{.files = {"/a b.tolvanerules", "/c"}}));
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(SingleInstanceTest, aLaterOneWithoutFilesAsksToBeSeen) {
    const auto first = instance();
    first->settle({}, {}, limit);
    listen(*first);
    EXPECT_EQ(instance()->settle({}, {}, limit), Outcome::handedOver);
    EXPECT_EQ(instance()->settle({.action = "history"}, {}, limit), Outcome::handedOver);
    EXPECT_TRUE(runUntil([&] { return told.size() == 2; }));
    EXPECT_THAT(told, ElementsAre(Request{}, Request{.action = "history"}));
}

TEST_F(SingleInstanceTest, whatComesBeforeAnybodyListensIsKept) {
    const auto first = instance();
    first->settle({}, {}, limit);
    EXPECT_EQ(instance()->settle({.files = {"/a"}}, {}, limit), Outcome::handedOver);
    listen(*first);
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Request{.files = {"/a"}}));
}

TEST_F(SingleInstanceTest, afterTheFirstHasGoneTheNextIsTheFirst) {
    EXPECT_EQ(instance()->settle({}, {}, limit), Outcome::first);
    runFor(std::chrono::milliseconds(20));
    EXPECT_EQ(instance()->settle({}, {}, limit), Outcome::first);
}

TEST_F(SingleInstanceTest, oneThatRunsAndDoesNotAnswerIsTold) {
    const FakeService silent(bus.address(), SingleInstance::usualName, "/dev/tolvane/Tolvane",
                             "<node><interface name='org.freedesktop.Application'><method name='Activate'>"
                             "<arg type='a{sv}' direction='in'/></method></interface></node>",
                             [](const std::string&) { return nullptr; });
    EXPECT_EQ(instance()->settle({}, {}, std::chrono::milliseconds(200)), Outcome::silent);
}

TEST_F(SingleInstanceTest, afterTheBusWasStartedAgainItIsStillTheOne) {
    const auto first = instance();
    EXPECT_EQ(first->settle({}, {}, limit), Outcome::first);
    listen(*first);
    for (std::size_t round = 1; round <= 2; ++round) {
        bus.die();
        runFor(std::chrono::milliseconds(50));
        bus.start();
        EXPECT_TRUE(runUntil([this] { return hasName(); }));
        EXPECT_EQ(instance()->settle({.files = {"/a"}}, {}, limit), Outcome::handedOver);
        EXPECT_TRUE(runUntil([&] { return told.size() == round; }));
    }
    EXPECT_THAT(told, ElementsAre(Request{.files = {"/a"}}, Request{.files = {"/a"}}));
}

TEST_F(SingleInstanceTest, theNameComesBackFromAStartThatGotInBetween) {
    const auto first = instance();
    first->settle({}, {}, limit);
    listen(*first);
    bus.die();
    bus.start();
    auto between = instance();
    EXPECT_EQ(between->settle({}, {}, limit), Outcome::first);
    // Until it finds that the first one holds the folder, and ends.
    runFor(std::chrono::milliseconds(400));
    between.reset();
    EXPECT_TRUE(runUntil([&] {
        instance()->settle({}, {}, limit);
        return !told.empty();
    }));
}

TEST_F(SingleInstanceTest, oneThatHandedOverTakesNoNameLater) {
    const auto first = instance();
    first->settle({}, {}, limit);
    listen(*first);
    const auto second = instance();
    EXPECT_EQ(second->settle({}, {}, limit), Outcome::handedOver);
    bus.die();
    bus.start();
    EXPECT_TRUE(runUntil([this] { return hasName(); }));
    EXPECT_EQ(instance()->settle({.action = "rules"}, {}, limit), Outcome::handedOver);
    EXPECT_TRUE(runUntil([&] { return told.size() == 2; }));
}

TEST_F(SingleInstanceTest, withoutABusItIsAlone) {
    SingleInstance none(std::make_shared<SessionBus>(std::string()));
    EXPECT_EQ(none.settle({}, {}, limit), Outcome::alone);
    SingleInstance gone(std::make_shared<SessionBus>("unix:path=/nowhere/bus"));
    EXPECT_EQ(gone.settle({}, {}, limit), Outcome::alone);
}

TEST_F(SingleInstanceTest, addressesThatAreNoFilesAreLeftOut) {
    const auto first = instance();
    first->settle({}, {}, limit);
    listen(*first);
    SessionBus other(bus.address());
    const char* list[] = {"https://example.org/x", "file:///a", "nonsense", nullptr};
    other.call({.destination = SingleInstance::usualName,
                .path = "/dev/tolvane/Tolvane",
                .interface = "org.freedesktop.Application",
                .method = "Open",
                .arguments =
                    taken(g_variant_new("(^as@a{sv})", list, g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)))},
               [](const BusAnswer&) {});
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(Request{.files = {"/a"}}));
}

}  // namespace tolvane::linuxhost
