// How a message becomes a call, and how blocks are made, with functions of this test in place of the runtime's.

#include "platform/macos/objc/Runtime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/objc/Block.h"
#include "tests/platform/macos/FakeRuntime.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;

Id someObject(std::uintptr_t number) { return reinterpret_cast<Id>(number); }

/// Sends as a Mac does, with `function` in place of `objc_msgSend`.
template <typename Function>
Runtime runtimeWith(Function* function) {
    RuntimeCalls calls;
    calls.send = [function](const Message& message, Perform perform) {
        return perform(reinterpret_cast<AnyFunction>(function), reinterpret_cast<Selector>(message.selector), message);
    };
    return Runtime(calls);
}

Id takesEverything(Id receiver, Selector selector, Id object, bool flag, std::int64_t whole, std::uint64_t natural,
                   double real, const char* bytes) {
    EXPECT_EQ(receiver, someObject(1));
    EXPECT_STREQ(reinterpret_cast<const char*>(selector), "a:b:c:d:e:f:");
    EXPECT_EQ(object, someObject(2));
    EXPECT_TRUE(flag);
    EXPECT_EQ(whole, -3);
    EXPECT_EQ(natural, 4U);
    EXPECT_DOUBLE_EQ(real, 5.5);
    EXPECT_STREQ(bytes, "six");
    return someObject(7);
}

TEST(ObjCRuntime, argumentsArriveInTheTypesThatTheSenderNamed) {
    const auto given =
        runtimeWith(&takesEverything)
            .send(someObject(1), "a:b:c:d:e:f:", someObject(2), true, std::int64_t{-3}, std::uint64_t{4}, 5.5, "six");
    EXPECT_EQ(given, someObject(7));
}

double givesReal(Id, Selector) { return 2.5; }
bool givesBool(Id, Selector) { return true; }
std::int64_t givesWhole(Id, Selector) { return -9; }
Size givesSize(Id, Selector) { return {.width = 3.5, .height = 4.5}; }
void writesError(Id, Selector, void* place) { *static_cast<Id*>(place) = someObject(3); }

TEST(ObjCRuntime, resultsComeInTheTypeThatTheSenderNamed) {
    EXPECT_DOUBLE_EQ(runtimeWith(&givesReal).send<double>(someObject(1), "real"), 2.5);
    EXPECT_TRUE(runtimeWith(&givesBool).send<bool>(someObject(1), "flag"));
    EXPECT_EQ(runtimeWith(&givesWhole).send<std::int64_t>(someObject(1), "whole"), -9);
    EXPECT_EQ(runtimeWith(&givesSize).send<Size>(someObject(1), "size"), (Size{.width = 3.5, .height = 4.5}));
}

TEST(ObjCRuntime, aPlaceForAnErrorIsWrittenTo) {
    Id error = nullptr;
    runtimeWith(&writesError).send<void>(someObject(1), "try:", static_cast<void*>(&error));
    EXPECT_EQ(error, someObject(3));
}

TEST(ObjCBlock, aCopyOutlivesTheBlockAndCallsTheFunction) {
    FakeRuntime fake;
    std::vector<Id> seen;
    Id copy = nullptr;
    {
        Block<Id, std::uint64_t> block(*fake.runtime(),
                                       [&](Id first, std::uint64_t second) { seen = {first, someObject(second)}; });
        copy = fake.copyOf(block.get());
    }
    callBlock(copy, someObject(5), std::uint64_t{6});
    EXPECT_THAT(seen, ElementsAre(someObject(5), someObject(6)));
}

TEST(ObjCBlock, whatTheFunctionHoldsGoesWithTheLastCopy) {
    const auto held = std::make_shared<int>(1);
    {
        FakeRuntime fake;
        const Block<> block(*fake.runtime(), [held] {});
        fake.copyOf(const_cast<Block<>&>(block).get());
        EXPECT_GT(held.use_count(), 1);
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST(ObjCBlock, saysWhatItTakes) {
    FakeRuntime fake;
    Block<bool, Id, std::uint64_t> block(*fake.runtime(), [](bool, Id, std::uint64_t) {});
    EXPECT_STREQ(reinterpret_cast<const BlockHead*>(block.get())->descriptor->signature, "v@?B@Q");
}

TEST(ObjCBlock, callingNilDoesNothing) { callBlock(Id{}); }

TEST(ObjCOwned, everyObjectIsLetGoOfOnce) {
    FakeRuntime fake;
    const Id thing = fake.object("NSObject", "thing");
    {
        auto first = Owned::retain(fake.runtime(), thing);
        Owned second = std::move(first);
        first = std::move(second);
        EXPECT_EQ(fake.at(thing).owners, 1);
        EXPECT_EQ(first.get(), thing);
    }
    EXPECT_EQ(fake.at(thing).owners, 0);
    const auto none = Owned::retain(fake.runtime(), nullptr);
    EXPECT_EQ(none.get(), nullptr);
}

}  // namespace
}  // namespace tolvane::machost
