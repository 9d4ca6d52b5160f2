#include <gmock/gmock.h>

#include "tests/app/ModelTest.h"
#include "tests/fakes/SmallDisk.h"

namespace tolvane {
namespace {

using ::testing::SizeIs;
using namespace std::chrono_literals;

/// A model whose folder is on a disk that accepts no more writes.
struct BadDiskTest : ModelTest {
    fakes::SmallDisk disk;

    void startOnFullDisk() {
        world.applicationSupport = disk / "";
        start();
        const std::string filler(200'000, 'x');
        std::ofstream(disk / "filler") << filler;
    }
};

TEST_F(BadDiskTest, aFullDiskLeavesTheModelWorking) {
    if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs rights that this user has not";
    startOnFullDisk();
    const auto before = model->rules->size();
    model->addRule({.id = UUID::random(), .name = std::string(30'000, 'n')});
    EXPECT_THAT(*model->rules, SizeIs(before + 1));
    clock.advance(120s);
    EXPECT_THAT(*model->moments, SizeIs(3));
    model->deleteRules({model->rules->front().id});
    EXPECT_THAT(*model->rules, SizeIs(before));
}

TEST_F(BadDiskTest, aDiskThatTurnsReadOnlyLeavesTheModelWorking) {
    if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs rights that this user has not";
    world.applicationSupport = disk / "";
    start();
    ASSERT_TRUE(disk.makeReadOnly());
    const auto before = model->rules->size();
    model->addRule({.id = UUID::random(), .name = "new"});
    clock.advance(120s);
    EXPECT_THAT(*model->rules, SizeIs(before + 1));
    EXPECT_THAT(*model->moments, SizeIs(3));
}

TEST_F(BadDiskTest, aBackupThatDoesNotFitSaysSo) {
    if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs rights that this user has not";
    start();
    world.syncFolder = disk / "";
    model->addRule({.id = UUID::random(), .name = std::string(100'000, 'n')});
    model->setBackupToSyncFolder(true);
    EXPECT_EQ(model->backupError->value_or("none"), "Rules.tolvanerules does not fit on the disk.");
    model->deleteRules({model->rules->back().id});
    EXPECT_EQ(*model->backupError, std::nullopt);
}

}  // namespace
}  // namespace tolvane
