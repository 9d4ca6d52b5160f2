#include "platform/macos/applications/AppBundlePath.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

TEST(AppBundlePath, isTheFolderThatHoldsTheExecutable) {
    EXPECT_EQ(appBundlePath("/Applications/Mail.app/Contents/MacOS/Mail"), "/Applications/Mail.app");
}

TEST(AppBundlePath, ofANestedBundleIsTheOutermost) {
    EXPECT_EQ(appBundlePath("/Applications/A.app/Contents/Frameworks/B.app/Contents/MacOS/B"), "/Applications/A.app");
}

TEST(AppBundlePath, needsASlashAfterTheEnding) {
    EXPECT_EQ(appBundlePath("/opt/tool.app"), std::nullopt);
    EXPECT_EQ(appBundlePath("/opt/tool.apple/bin/tool"), std::nullopt);
}

TEST(AppBundlePath, isNoneOutsideOfBundles) {
    EXPECT_EQ(appBundlePath(""), std::nullopt);
    EXPECT_EQ(appBundlePath("/opt/node"), std::nullopt);
}

TEST(AppBundlePath, ofAnEndingAloneIsTheEnding) { EXPECT_EQ(appBundlePath(".app/x"), ".app"); }

}  // namespace
}  // namespace tolvane
