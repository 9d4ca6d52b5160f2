#include "app/model/RuleFileArguments.h"

#include <gmock/gmock.h>

#include "core/rules/RuleFile.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct OpenFilesTest : ModelTest {
    int broughtForward = 0;

    OpenFilesTest() { start(); }
    std::string file(std::string_view name, std::int64_t minutes) const {
        folder.write(name, RuleFile::encode({Rule{.id = UUID::random(), .unusedMinutes = minutes}}));
        return folder / name;
    }
    void open(const std::vector<std::string>& paths, bool windowPresent) {
        RuleFileArguments::open(*model, paths, [this, windowPresent] {
            ++broughtForward;
            return windowPresent;
        });
    }
};

TEST_F(OpenFilesTest, wordsThatNameFilesAreMadeAbsolute) {
    folder.write("there.json", "");
    const auto files = RuleFileArguments::among(
        {"/far/a.tolvanerules", "b.tolvanerules", "there.json", "./there.json", "nothing.json", ""}, folder / "");
    EXPECT_THAT(files.paths, ElementsAre("/far/a.tolvanerules", folder / "b.tolvanerules", folder / "there.json",
                                         folder / "there.json"));
    EXPECT_THAT(files.others, ElementsAre("nothing.json", ""));
}

TEST_F(OpenFilesTest, withAWindowItComesForwardAndShowsTheMessage) {
    open({file("one.tolvanerules", 7)}, true);
    EXPECT_EQ(broughtForward, 1);
    EXPECT_TRUE(model->importMessage->value_or("").starts_with("Added 1 rule from one.tolvanerules."));
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(OpenFilesTest, withoutAWindowTheMessageIsANotification) {
    open({file("one.tolvanerules", 7)}, false);
    ASSERT_EQ(world.notifications.size(), 1U);
    EXPECT_EQ(world.notifications[0].title, "Tolvane Rules");
    EXPECT_TRUE(world.notifications[0].body.starts_with("Added 1 rule from one.tolvanerules."));
    EXPECT_EQ(world.notifications[0].section, std::nullopt);
    EXPECT_EQ(*model->importMessage, std::nullopt);
}

TEST_F(OpenFilesTest, ofThreeFilesTheLastOnesMessageStands) {
    open({file("one.tolvanerules", 7), file("two.tolvanerules", 8), file("three.tolvanerules", 8)}, true);
    EXPECT_EQ(*model->importMessage, "Every rule in three.tolvanerules is already in Tolvane.");
    EXPECT_EQ(model->rules->size(), Rule::presets().size() + 2);
}

TEST_F(OpenFilesTest, nothingToOpenSaysNothing) {
    open({}, false);
    EXPECT_EQ(broughtForward, 0);
    EXPECT_THAT(world.notifications, IsEmpty());
}

}  // namespace
}  // namespace tolvane
