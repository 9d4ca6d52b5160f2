#include "platform/linux/text/ExecLine.h"

#include <gmock/gmock.h>

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ExecLine, wordsAndQuotes) {
    EXPECT_THAT(commandOfExec("app --flag \"two words\" \"a \\\"b\\\" \\$c\"", {}),
                ElementsAre("app", "--flag", "two words", "a \"b\" $c"));
}

TEST(ExecLine, placesForFilesAreFilled) {
    const ExecFacts two{.files = {"/a b", "/c"}};
    EXPECT_THAT(commandOfExec("app %f", two), ElementsAre("app", "/a b"));
    EXPECT_THAT(commandOfExec("app %F", two), ElementsAre("app", "/a b", "/c"));
    EXPECT_THAT(commandOfExec("app %u", two), ElementsAre("app", "file:///a%20b"));
    EXPECT_THAT(commandOfExec("app %U -x", two), ElementsAre("app", "file:///a%20b", "file:///c", "-x"));
    EXPECT_THAT(commandOfExec("app --file=%f", two), ElementsAre("app", "--file=/a b"));
}

TEST(ExecLine, placesForFilesAreLeftOutWithout) {
    EXPECT_THAT(commandOfExec("app %f %F %u %U -x", {}), ElementsAre("app", "-x"));
}

TEST(ExecLine, aFileWithoutAPlaceComesLast) {
    EXPECT_THAT(commandOfExec("app -x", {.files = {"/a", "/b"}}), ElementsAre("app", "-x", "/a"));
}

TEST(ExecLine, nameIconAndEntry) {
    const ExecFacts facts{.name = "The App", .icon = "app", .entryPath = "/e/app.desktop"};
    EXPECT_THAT(commandOfExec("app %i -name %c %k", facts),
                ElementsAre("app", "--icon", "app", "-name", "The App", "/e/app.desktop"));
    EXPECT_THAT(commandOfExec("app %i %c", {}), ElementsAre("app"));
}

TEST(ExecLine, percentSignsAndOldPlaces) {
    EXPECT_THAT(commandOfExec("app 100%% %d %N %v a%", {}), ElementsAre("app", "100%", "a%"));
    EXPECT_THAT(commandOfExec("app %%", {}), ElementsAre("app", "%"));
}

TEST(ExecLine, whatCannotBeReadIsNoCommand) {
    EXPECT_THAT(commandOfExec("", {}), IsEmpty());
    EXPECT_THAT(commandOfExec("app \"open", {}), IsEmpty());
    EXPECT_THAT(commandOfExec("%f", {}), IsEmpty());
}

}  // namespace tolvane::linuxhost
