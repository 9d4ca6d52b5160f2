#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "app/preferences/LayeredPreferences.h"
#include "platform/macos/MacCalls.h"
#include "tests/platform/macos/FakeDispatch.h"
#include "tests/platform/macos/FakeKernel.h"
#include "tests/platform/macos/FakeRuntime.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;

class MacHostTest : public ::testing::Test {
protected:
    Host host(const PreferencesLayer& layer = {}) {
        return hostOn(
            {.kernel = kernel_.table(), .runtime = runtime_.runtime(), .dispatch = dispatch_.table(), .log = log_},
            layer, dispatch_.onMain());
    }

    FakeKernel kernel_;
    FakeRuntime runtime_;
    FakeDispatch dispatch_;
    std::vector<std::string> lines_;
    std::vector<std::string> logs_;
    LogCalls log_{.create = [this](const char* subsystem, const char* category) -> void* {
                      return &logs_.emplace_back(std::string(subsystem) + " " + category);
                  },
                  .info = [this](void*, const char* line) { lines_.emplace_back(line); }};
};

TEST_F(MacHostTest, answersEveryQuestion) {
    const auto host = this->host();
    EXPECT_TRUE(host.makeInspection());
    EXPECT_TRUE(host.machine && host.control && host.applications && host.running && host.frontmost);
    EXPECT_TRUE(host.notifications && host.services && host.children && host.loginItem && host.desktop);
    EXPECT_TRUE(host.propertyLists && host.pressure && host.preferences && host.folders && host.clock && host.log);
    EXPECT_TRUE(host.trays && host.windows && host.symbols && host.dock);
    EXPECT_EQ(host.selfPID, 900);
    EXPECT_EQ(host.uid, 501U);
}

TEST_F(MacHostTest, managedProcessesAreAskedOfTheListingTool) {
    EXPECT_THAT(host().services->managedPIDs(), ::testing::IsEmpty());
    ASSERT_EQ(kernel_.spawned.size(), 1U);
    EXPECT_THAT(kernel_.spawned[0].arguments, ElementsAre("/bin/launchctl", "list"));
}

TEST_F(MacHostTest, preferencesOfThisRunStandAboveTheStored) {
    const auto host = this->host(LayeredPreferences::layer({{"demo", true}}));
    EXPECT_EQ(host.preferences->get<bool>("demo"), true);
    EXPECT_FALSE(host.preferences->get<bool>("rulesPaused"));
}

TEST_F(MacHostTest, aLogOfACategoryIsMadeOnce) {
    const auto host = this->host();
    host.log->info("rules", "Idle servers: Terminated node");
    host.log->info("rules", "100% {public}s");
    host.log->info("memory", "tight");
    EXPECT_THAT(logs_, ElementsAre("dev.tolvane.Tolvane rules", "dev.tolvane.Tolvane memory"));
    EXPECT_THAT(lines_, ElementsAre("Idle servers: Terminated node", "100% {public}s", "tight"));
}

}  // namespace
}  // namespace tolvane::machost
