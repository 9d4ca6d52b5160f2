// Compares what the bundle tells the system about the program with what the program says itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "core/rules/RuleFile.h"

namespace tolvane::machost {
namespace {

/// Without the whitespace between its elements.
std::string infoList() {
    std::ifstream file(TOLVANE_INFO_LIST);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return std::regex_replace(text, std::regex(R"(>\s+<)"), "><");
}

std::string stringUnder(const std::string& key, std::string_view value) {
    return "<key>" + key + "</key><string>" + std::string(value) + "</string>";
}

std::string onlyStringUnder(const std::string& key, std::string_view value) {
    return "<key>" + key + "</key><array><string>" + std::string(value) + "</string></array>";
}

TEST(Bundle, exportsTheTypeOfRuleFilesAndOpensThem) {
    const auto info = infoList();
    EXPECT_THAT(info, ::testing::HasSubstr(stringUnder("UTTypeIdentifier", RuleFile::typeIdentifier)));
    EXPECT_THAT(info, ::testing::HasSubstr(onlyStringUnder("UTTypeConformsTo", "public.json")));
    EXPECT_THAT(info, ::testing::HasSubstr(onlyStringUnder("public.filename-extension", RuleFile::fileExtension)));
    EXPECT_THAT(info, ::testing::HasSubstr(onlyStringUnder("LSItemContentTypes", RuleFile::typeIdentifier)));
}

TEST(Bundle, isAMenuBarItemOfMacOS15) {
    const auto info = infoList();
    EXPECT_THAT(info, ::testing::HasSubstr("<key>LSUIElement</key><true/>"));
    EXPECT_THAT(info, ::testing::HasSubstr(stringUnder("LSMinimumSystemVersion", "15.0")));
    EXPECT_THAT(info, ::testing::HasSubstr(stringUnder("CFBundleIdentifier", "dev.tolvane.Tolvane")));
}

}  // namespace
}  // namespace tolvane::machost
