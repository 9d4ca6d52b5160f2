#include "app/tasks/PortLookup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "tests/fakes/Executors.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

class PortLookupTest : public ::testing::Test {
protected:
    PortLookupTest() { fake.world->add(7, "node").ports = {8080, 3000, 8080}; }

    fakes::FakeHost fake;
    fakes::HeldJobs jobs;
    std::unique_ptr<Executor> executor = jobs.factory()();
    std::optional<std::vector<int>> answer;
    PortLookup::Answer keep = [this](std::vector<int> ports) { answer = std::move(ports); };
};

TEST_F(PortLookupTest, comeAscendingAndOnce) {
    PortLookup reader(fake.host, *executor);
    reader.read(7, keep);
    EXPECT_FALSE(answer) << "they are read in the background";
    jobs.runAll();
    EXPECT_THAT(answer, Optional(ElementsAre(3000, 8080)));
}

TEST_F(PortLookupTest, ofAGoneProcessAreNone) {
    PortLookup reader(fake.host, *executor);
    reader.read(99, keep);
    jobs.runAll();
    EXPECT_THAT(answer, Optional(IsEmpty()));
}

TEST_F(PortLookupTest, answerTheLatestQuestionAlone) {
    PortLookup reader(fake.host, *executor);
    bool first = false;
    reader.read(7, [&](const std::vector<int>&) { first = true; });
    reader.read(99, keep);
    jobs.runAll();
    EXPECT_FALSE(first);
    EXPECT_THAT(answer, Optional(IsEmpty()));
    EXPECT_EQ(fake.world->timesAsked("listeningPorts 7"), 0U) << "nobody wants to know any more";
}

TEST_F(PortLookupTest, areNotToldOnceForgotten) {
    PortLookup reader(fake.host, *executor);
    reader.read(7, keep);
    reader.forget();
    jobs.runAll();
    EXPECT_FALSE(answer);
    reader.read(7, keep);
    jobs.runAll();
    EXPECT_TRUE(answer);
}

TEST_F(PortLookupTest, areNotToldToWhoIsGone) {
    {
        PortLookup reader(fake.host, *executor);
        reader.read(7, keep);
    }
    jobs.runAll();
    EXPECT_FALSE(answer);
}

}  // namespace
}  // namespace tolvane
