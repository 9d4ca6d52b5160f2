#include "app/ListeningPorts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThreadPool>
#include <optional>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <typename Condition>
bool holdsInTime(Condition condition) {
    const QDeadlineTimer limit(10'000);
    while (!condition() && !limit.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

/// Lets everything that is under way arrive.
void settle() {
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

class ListeningPortsTest : public ::testing::Test {
protected:
    ListeningPortsTest() { fake.world->add(7, "node").ports = {8080, 3000, 8080}; }

    fakes::FakeHost fake;
    std::optional<std::vector<int>> answer;
    ListeningPorts::Answer keep = [this](std::vector<int> ports) { answer = std::move(ports); };
};

TEST_F(ListeningPortsTest, comeAscendingAndOnce) {
    ListeningPorts reader(fake.host);
    reader.read(7, keep);
    EXPECT_FALSE(answer) << "the answer comes through the event loop";
    ASSERT_TRUE(holdsInTime([&] { return answer.has_value(); }));
    EXPECT_THAT(*answer, ElementsAre(3000, 8080));
}

TEST_F(ListeningPortsTest, ofAGoneProcessAreNone) {
    ListeningPorts reader(fake.host);
    reader.read(99, keep);
    ASSERT_TRUE(holdsInTime([&] { return answer.has_value(); }));
    EXPECT_THAT(*answer, IsEmpty());
}

TEST_F(ListeningPortsTest, answerTheLatestQuestionAlone) {
    ListeningPorts reader(fake.host);
    bool first = false;
    reader.read(7, [&](const std::vector<int>&) { first = true; });
    settle();
    first = false;
    reader.read(7, [&](const std::vector<int>&) { first = true; });
    reader.read(99, keep);
    settle();
    EXPECT_FALSE(first);
    ASSERT_TRUE(answer);
    EXPECT_THAT(*answer, IsEmpty());
}

TEST_F(ListeningPortsTest, areNotToldOnceForgotten) {
    ListeningPorts reader(fake.host);
    reader.read(7, keep);
    reader.forget();
    settle();
    EXPECT_FALSE(answer);
}

TEST_F(ListeningPortsTest, areNotToldToWhoIsGone) {
    {
        ListeningPorts reader(fake.host);
        reader.read(7, keep);
    }
    settle();
    EXPECT_FALSE(answer);
}

}  // namespace
}  // namespace tolvane
