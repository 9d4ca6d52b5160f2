#include "platform/linux/applications/AppProcesses.h"

#include <gmock/gmock.h>

namespace tolvane::linuxhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

AppProcess process(Pid pid, Pid ppid, const std::string& executable = "/opt/app/app", const std::string& group = {}) {
    return {.pid = pid,
            .ppid = ppid,
            .startTicks = static_cast<std::uint64_t>(pid),
            .executable = executable,
            .group = group};
}

std::vector<std::vector<Pid>> pidsOf(const std::vector<std::vector<AppProcess>>& instances) {
    std::vector<std::vector<Pid>> pids;
    for (const auto& members : instances) {
        auto& list = pids.emplace_back();
        for (const AppProcess& each : members) list.push_back(each.pid);
    }
    return pids;
}

std::vector<Pid> mains(const std::vector<AppProcess>& instance) {
    std::vector<Pid> pids;
    for (const AppProcess& each : mainProcesses(instance)) pids.push_back(each.pid);
    return pids;
}

}  // namespace

TEST(AppProcesses, aBrowserWithItsManyProcessesIsOneInstance) {
    EXPECT_THAT(pidsOf(instancesOf({process(13, 12), process(10, 1), process(12, 11), process(11, 10)})),
                ElementsAre(ElementsAre(10, 11, 12, 13)));
}

TEST(AppProcesses, thoseStartedApartAreInstancesApart) {
    EXPECT_THAT(pidsOf(instancesOf({process(20, 1), process(21, 20), process(10, 1)})),
                ElementsAre(ElementsAre(10), ElementsAre(20, 21)));
    EXPECT_THAT(instancesOf({}), IsEmpty());
}

TEST(AppProcesses, oneControlGroupIsOneInstance) {
    const std::string first = "app-x-1.scope";
    const std::string second = "app-x-2.scope";
    EXPECT_THAT(pidsOf(instancesOf({process(10, 1, "a", first), process(11, 1, "b", first), process(20, 1, "a", second),
                                    process(21, 20, "a", second)})),
                ElementsAre(ElementsAre(10, 11), ElementsAre(20, 21)));
}

TEST(AppProcesses, parentsThatRunInCirclesEnd) {
    EXPECT_THAT(pidsOf(instancesOf({process(10, 11), process(11, 10), process(12, 12)})),
                ElementsAre(ElementsAre(10, 11), ElementsAre(12)));
}

TEST(AppProcesses, theApplicationItselfIsItsOwnProgramWithoutWhatItStarted) {
    EXPECT_THAT(
        mains({process(10, 1), process(11, 10), process(12, 1, "/usr/bin/adb"), process(13, 10, "/usr/bin/git")}),
        ElementsAre(10));
}

TEST(AppProcesses, aScriptThatStartsTheProgramIsNotTheApplication) {
    EXPECT_THAT(mains({process(10, 1, "/usr/bin/dash"), process(11, 10), process(12, 11)}), ElementsAre(11));
    EXPECT_THAT(mains({process(10, 1, "/usr/bin/dash"), process(11, 10, "/usr/bin/dash")}), ElementsAre(10));
}

}  // namespace tolvane::linuxhost
