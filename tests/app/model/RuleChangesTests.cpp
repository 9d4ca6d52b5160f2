#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "core/rules/RuleFile.h"
#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"
#include "tests/fakes/Fixtures.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

Rule ruleOf(std::string name, std::int64_t minutes) {
    return {.id = UUID::random(),
            .name = std::move(name),
            .target = CommandTarget{{"puma"}},
            .unusedMinutes = minutes,
            .action = RuleAction::terminate};
}

struct RuleChangesTest : ModelTest {
    RuleChangesTest() {
        start();
        modelState->rules.set({ruleOf("first", 15), ruleOf("second", 30)});
    }

    std::string file(std::string_view name, const std::vector<Rule>& rules) const {
        folder.write(name, RuleFile::encode(rules));
        return folder / name;
    }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& each : *model->rules) names.push_back(each.name);
        return names;
    }
    std::vector<Rule> stored() const { return Store(folder / "Tolvane").loadRules(); }
    std::string message() const { return model->importMessage->value_or("none"); }
};

TEST_F(RuleChangesTest, anAddedRuleIsLastSelectedShownAndSaved) {
    const auto added = ruleOf("third", 60);
    model->addRule(added);
    EXPECT_THAT(names(), ElementsAre("first", "second", "third"));
    EXPECT_EQ(*model->selectedRule, added.id);
    EXPECT_EQ(*model->section, AppSection::rules);
    EXPECT_EQ(stored(), *model->rules);
}

TEST_F(RuleChangesTest, aReplacedRuleKeepsItsPlaceAndIsSaved) {
    auto edited = (*model->rules)[0];
    edited.name = "edited";
    model->replaceRule(edited);
    EXPECT_THAT(names(), ElementsAre("edited", "second"));
    EXPECT_EQ(stored(), *model->rules);
}

TEST_F(RuleChangesTest, replacingAnUnknownRuleWritesNothing) {
    std::filesystem::remove_all(folder / "Tolvane");
    model->replaceRule(ruleOf("unknown", 60));
    EXPECT_THAT(names(), ElementsAre("first", "second"));
    EXPECT_FALSE(std::filesystem::exists(folder / "Tolvane"));
}

TEST_F(RuleChangesTest, deletedRulesLeaveTheOthersInOrder) {
    model->addRule(ruleOf("third", 60));
    model->selectRule((*model->rules)[0].id);
    model->deleteRules({(*model->rules)[1].id, UUID::random()});
    EXPECT_THAT(names(), ElementsAre("first", "third"));
    EXPECT_EQ(*model->selectedRule, (*model->rules)[0].id);
    EXPECT_EQ(stored(), *model->rules);
}

TEST_F(RuleChangesTest, deletingTheSelectedRuleClearsTheSelection) {
    const auto first = (*model->rules)[0].id;
    model->selectRule(first);
    model->deleteRules({first});
    EXPECT_EQ(*model->selectedRule, std::nullopt);
}

// Importing

TEST_F(RuleChangesTest, oneImportedRuleIsSelectedAndOnlyLogs) {
    model->importRules(file("one.tolvanerules", {ruleOf("new", 480)}));
    EXPECT_EQ(message(),
              "Added 1 rule from one.tolvanerules. It starts in Log Only, so it only writes what it would do to "
              "Activity.");
    EXPECT_THAT(names(), ElementsAre("first", "second", "new"));
    EXPECT_EQ(model->rules->back().mode(), RuleMode::logOnly);
    EXPECT_EQ(*model->selectedRule, model->rules->back().id);
    EXPECT_EQ(*model->section, AppSection::rules);
    EXPECT_EQ(stored(), *model->rules);
}

TEST_F(RuleChangesTest, ofSeveralImportedRulesTheLastIsSelected) {
    model->importRules(file("two.tolvanerules", {ruleOf("a", 480), ruleOf("b", 1440)}));
    EXPECT_EQ(message(),
              "Added 2 rules from two.tolvanerules. They start in Log Only, so they only write what they would do to "
              "Activity.");
    EXPECT_EQ(*model->selectedRule, model->rules->back().id);
}

TEST_F(RuleChangesTest, rulesThatAreThereAddNothingButAreShown) {
    const auto before = *model->rules;
    model->importRules(file("same.tolvanerules", before));
    EXPECT_EQ(message(), "Every rule in same.tolvanerules is already in Tolvane.");
    EXPECT_EQ(*model->rules, before);
    EXPECT_EQ(*model->selectedRule, std::nullopt);
    EXPECT_EQ(*model->section, AppSection::rules);
}

TEST_F(RuleChangesTest, aSecondFileOverwritesTheMessage) {
    model->importRules(file("one.tolvanerules", {ruleOf("new", 480)}));
    model->importRules(folder / "missing.tolvanerules");
    EXPECT_EQ(message(), "missing.tolvanerules is not a Tolvane rules file.");
    EXPECT_THAT(*model->rules, SizeIs(3));
}

struct NoRuleFileTest : RuleChangesTest {
    /// Imports the file and expects it to be refused.
    void refuses(const std::string& name) {
        const auto before = *model->rules;
        model->dismissImportMessage();
        model->importRules(folder / name);
        EXPECT_EQ(message(), name + " is not a Tolvane rules file.");
        EXPECT_EQ(*model->rules, before);
        EXPECT_EQ(*model->section, AppSection::processes);
    }
};

TEST_F(NoRuleFileTest, whatIsNoFileIsRefusedAtOnce) {
    std::filesystem::create_directory(folder / "folder.tolvanerules");
    refuses("folder.tolvanerules");
    ASSERT_EQ(::mkfifo((folder / "pipe.tolvanerules").c_str(), 0600), 0);
    refuses("pipe.tolvanerules");
    std::filesystem::create_symlink("/dev/zero", folder / "device.tolvanerules");
    refuses("device.tolvanerules");
    std::filesystem::create_symlink("loop.tolvanerules", folder / "loop.tolvanerules");
    refuses("loop.tolvanerules");
    refuses("missing.tolvanerules");
}

TEST_F(NoRuleFileTest, aFileOfAGigabyteIsNotRead) {
    folder.write("huge.tolvanerules", "{");
    ASSERT_EQ(::truncate((folder / "huge.tolvanerules").c_str(), off_t{1} << 30), 0);
    refuses("huge.tolvanerules");
}

TEST_F(NoRuleFileTest, nameThatIsNoTextIsRepaired) {
    model->importRules(folder / "\xff.tolvanerules");
    EXPECT_EQ(message(), "\xEF\xBF\xBD.tolvanerules is not a Tolvane rules file.");
}

TEST_F(NoRuleFileTest, everyMalformedFileOfACollectionIsRefused) {
    const std::filesystem::path cases = fakes::fixtures() + "/rules/malformed";
    std::size_t count = 0;
    for (const auto& each : std::filesystem::directory_iterator(cases)) {
        std::filesystem::copy(each.path(), folder.path());
        refuses(each.path().filename().string());
        ++count;
    }
    EXPECT_GE(count, 50U);
}

TEST_F(RuleChangesTest, aLinkToARuleFileIsFollowed) {
    file("target", {ruleOf("new", 480)});
    std::filesystem::create_symlink(folder / "target", folder / "link.tolvanerules");
    model->importRules(folder / "link.tolvanerules");
    EXPECT_THAT(*model->rules, SizeIs(3));
    EXPECT_TRUE(message().starts_with("Added 1 rule from link.tolvanerules."));
}

// Backup

struct BackupTest : RuleChangesTest {
    static constexpr std::string_view copy = "Sync/Tolvane/Rules.tolvanerules";

    BackupTest() {
        std::filesystem::create_directory(folder / "Sync");
        world.syncFolder = folder / "Sync";
    }
    std::vector<Rule> backedUp() const {
        auto rules = RuleFile::decode(folder.read(copy));
        return rules ? *rules : std::vector<Rule>{};
    }
    std::string error() const { return model->backupError->value_or("none"); }
};

TEST_F(BackupTest, liesInTheFolderThatSyncs) {
    EXPECT_EQ(model->backupPath(), folder / copy);
    world.syncFolder.reset();
    EXPECT_EQ(model->backupPath(), std::nullopt);
}

TEST_F(BackupTest, whileOffNothingIsWritten) {
    model->addRule(ruleOf("third", 60));
    EXPECT_FALSE(std::filesystem::exists(folder / "Sync/Tolvane"));
}

TEST_F(BackupTest, turningItOnWritesAtOnceAndOffLeavesTheFile) {
    model->setBackupToSyncFolder(true);
    EXPECT_EQ(backedUp(), *model->rules);
    model->setBackupToSyncFolder(false);
    EXPECT_EQ(backedUp(), *model->rules);
    model->addRule(ruleOf("third", 60));
    EXPECT_THAT(backedUp(), SizeIs(2));
}

TEST_F(BackupTest, everyChangeOfTheRulesIsWritten) {
    model->setBackupToSyncFolder(true);
    model->addRule(ruleOf("third", 60));
    EXPECT_THAT(backedUp(), SizeIs(3));
    model->deleteRules({model->rules->back().id});
    EXPECT_EQ(backedUp(), *model->rules);
    model->importRules(file("one.tolvanerules", {ruleOf("new", 480)}));
    EXPECT_EQ(backedUp(), *model->rules);
}

TEST_F(BackupTest, withNoFolderThatSyncsNothingHappens) {
    modelState->backupError.set("before");
    world.syncFolder.reset();
    model->setBackupToSyncFolder(true);
    EXPECT_EQ(error(), "before");
}

TEST_F(BackupTest, aFailureIsToldAndTheRulesAreSaved) {
    folder.write("Sync/Tolvane", "a file where the folder belongs");
    model->setBackupToSyncFolder(true);
    EXPECT_NE(error(), "none");
    model->addRule(ruleOf("third", 60));
    EXPECT_EQ(stored(), *model->rules);
    std::filesystem::remove(folder / "Sync/Tolvane");
    model->addRule(ruleOf("fourth", 60));
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(backedUp(), *model->rules);
}

TEST_F(BackupTest, aRestoreTakesTheRulesAsTheyStood) {
    auto kept = ruleOf("kept", 60);
    kept.setMode(RuleMode::on);
    auto off = ruleOf("off", 60);
    file(copy, {kept, off});
    model->selectRule(model->rules->front().id);
    modelState->backupError.set("before");
    model->restoreBackup();
    EXPECT_EQ(*model->rules, (std::vector{kept, off}));
    EXPECT_EQ(*model->selectedRule, std::nullopt);
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(stored(), *model->rules);
}

TEST_F(BackupTest, aRestoreWithNothingThereSaysSo) {
    const auto before = *model->rules;
    model->restoreBackup();
    EXPECT_EQ(error(), "Could not restore: Rules.tolvanerules does not exist.");
    EXPECT_EQ(*model->rules, before);
}

TEST_F(BackupTest, aRestoreFromADamagedFileLeavesTheRules) {
    const auto before = *model->rules;
    model->selectRule(before.front().id);
    folder.write(copy, "{");
    model->restoreBackup();
    EXPECT_EQ(error(), "Could not restore: Rules.tolvanerules is not a Tolvane rules file.");
    EXPECT_EQ(*model->rules, before);
    EXPECT_EQ(*model->selectedRule, before.front().id);
}

TEST_F(BackupTest, aRestoreWithNoFolderThatSyncsDoesNothing) {
    world.syncFolder.reset();
    model->restoreBackup();
    EXPECT_EQ(error(), "none");
    EXPECT_THAT(*model->rules, SizeIs(2));
}

}  // namespace
}  // namespace tolvane
