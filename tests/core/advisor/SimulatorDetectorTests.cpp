#include "core/advisor/Simulators.h"
#include "tests/core/advisor/AdviceTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view device = "6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E";

struct FindSimulatorsTest : AdviceTest {
    static std::string path(std::string_view name) {
        return "/Users/ada/Library/Developer/CoreSimulator/Devices/" + std::string(name) + "/data/var/run/boot.plist";
    }
    /// Boots a device of three processes, unused for at least `idle`.
    void boot(Seconds idle, const std::string& argument = path(device)) {
        add(20, 1, "launchd_sim", {"launchd_sim", argument}).unusedSince = now - idle;
        add(21, 20, "SpringBoard").unusedSince = now - idle - Seconds{60};
        add(22, 21, "assistantd").unusedSince = now - idle - Seconds{120};
    }
};

TEST_F(FindSimulatorsTest, aDeviceLeftBootedIsFound) {
    simulators.emplace(device, "iPhone 16 Pro");
    boot(Seconds{5400});
    const auto found = only();
    EXPECT_EQ(found.id, "simulator|" + std::string(device));
    EXPECT_EQ(found.kind, Suggestion::Kind::simulator);
    EXPECT_EQ(found.title, "iPhone 16 Pro");
    EXPECT_THAT(found.pids, ElementsAre(20, 21, 22));
    EXPECT_EQ(found.memory, 30 * MiB);
    EXPECT_EQ(found.evidence, "Its 3 processes have been idle for 1 hr, 30 min.");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_FALSE(found.appPath);
    EXPECT_FALSE(found.rule);
    EXPECT_FALSE(found.cpu);
}

TEST_F(FindSimulatorsTest, anHourUnusedIsTheLeast) {
    boot(Seconds{3600});
    EXPECT_EQ(suggestions().size(), 1U);
    world.rows[2].unusedSince = now - Seconds{3599};
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindSimulatorsTest, theirApplicationInFrontHidesThemAll) {
    boot(Seconds{5 * 86'400});
    world.frontmostAppID = "com.apple.iphonesimulator";
    EXPECT_THAT(ids(), IsEmpty());
    world.frontmostAppID = "com.example.editor";
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(FindSimulatorsTest, withoutADeviceInTheArgumentsThereIsNone) {
    boot(Seconds{5400}, "/var/run/boot.plist");
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindSimulatorsTest, aDeviceThatIsNoIdentifierIsNone) {
    boot(Seconds{5400}, path("iPhone"));
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindSimulatorsTest, aDeviceWithoutANameIsASimulator) {
    boot(Seconds{5400});
    EXPECT_EQ(only().title, "Simulator");
}

TEST_F(FindSimulatorsTest, anotherUsersProcessesAreNotCounted) {
    boot(Seconds{5400});
    world.rows[1].sample.uid = 0;
    const auto found = only();
    EXPECT_THAT(found.pids, ElementsAre(20, 22));
    EXPECT_EQ(found.evidence, "Its 2 processes have been idle for 1 hr, 30 min.");
}

TEST_F(FindSimulatorsTest, whatADeviceHoldsIsNotSuggestedAgain) {
    boot(Seconds{3 * 3600});
    world.rows[1].sample.footprint = GiB;
    EXPECT_THAT(ids(), ElementsAre("simulator|" + std::string(device)));
}

TEST_F(FindSimulatorsTest, anotherProgramWithADeviceInItsArgumentsIsNone) {
    boot(Seconds{5400});
    world.rows[0].sample.name = "launchd";
    EXPECT_THAT(ids(), IsEmpty());
}

TEST(Simulators, theDeviceStandsBetweenItsFolderAndTheNextSlash) {
    const std::string before = "/Library/Developer/CoreSimulator/Devices/";
    EXPECT_EQ(Simulators::device({"a", before + std::string(device) + "/data"}), device);
    EXPECT_EQ(Simulators::device({before + std::string(device)}), device);
    EXPECT_EQ(Simulators::device({}), std::nullopt);
    EXPECT_EQ(Simulators::device({before}), std::nullopt);
    EXPECT_EQ(Simulators::device({before + "x/" + before + std::string(device)}), std::nullopt);
}

TEST(Simulators, anArgumentWithoutADeviceLeavesTheNextToTry) {
    const std::string before = "/Library/Developer/CoreSimulator/Devices/";
    EXPECT_EQ(Simulators::device({before + "x/data", before + std::string(device)}), device);
}

TEST(Simulators, theIdentifierStaysAsItStands) {
    const std::string lower = "6f0e0c9a-2b41-4e8f-9b8a-0d5a1b2c3d4e";
    EXPECT_EQ(Simulators::device({"/CoreSimulator/Devices/" + lower + "/data"}), lower);
}

struct NamedLists : PropertyLists {
    std::optional<std::string> text(const std::string& path, std::string_view key) override {
        asked = path + " " + std::string(key);
        return "iPhone 16";
    }
    std::string asked;
};

TEST(Simulators, theNameStandsInTheDevicesPropertyList) {
    NamedLists lists;
    EXPECT_EQ(Simulators::name(lists, "/home/ada", device), "iPhone 16");
    EXPECT_EQ(lists.asked,
              "/home/ada/Library/Developer/CoreSimulator/Devices/" + std::string(device) + "/device.plist name");
}

}  // namespace
}  // namespace tolvane
