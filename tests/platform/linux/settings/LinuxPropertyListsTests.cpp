#include "platform/linux/settings/LinuxPropertyLists.h"

#include <gmock/gmock.h>
#include <plist/plist.h>

#include <cstdlib>
#include <memory>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {
namespace {

const std::string header =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

std::string xml(const std::string& inside) { return header + inside + "</plist>\n"; }

std::string binary(const std::string& text) {
    plist_t node = nullptr;
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &node);
    plist_to_bin(node, &bytes, &length);
    const std::unique_ptr<void, decltype(&plist_free)> owner(node, &plist_free);
    const std::unique_ptr<char, decltype(&std::free)> bytesOwner(bytes, &std::free);
    return {bytes, length};
}

struct LinuxPropertyListsTest : testing::Test {
    TemporaryFolder folder;
    LinuxPropertyLists lists;

    std::optional<std::string> nameIn(const std::string& bytes) {
        return lists.text(folder.write("Devices/1/device.plist", bytes), "name");
    }
};

const std::string device = "<dict><key>state</key><integer>3</integer><key>name</key><string>iPhone 16</string></dict>";

TEST_F(LinuxPropertyListsTest, givesTheTextUnderAKey) { EXPECT_EQ(nameIn(xml(device)), "iPhone 16"); }

TEST_F(LinuxPropertyListsTest, readsTheBinaryFormToo) { EXPECT_EQ(nameIn(binary(xml(device))), "iPhone 16"); }

TEST_F(LinuxPropertyListsTest, withoutAFileThereIsNone) {
    EXPECT_EQ(lists.text(folder.at("missing.plist"), "name"), std::nullopt);
    EXPECT_EQ(lists.text(folder.path(), "name"), std::nullopt);
}

TEST_F(LinuxPropertyListsTest, aDamagedFileHasNone) {
    EXPECT_EQ(nameIn(""), std::nullopt);
    EXPECT_EQ(nameIn("name"), std::nullopt);
    EXPECT_EQ(nameIn("bplist00"), std::nullopt);
    EXPECT_EQ(nameIn(xml(device).substr(0, 200)), std::nullopt);
    EXPECT_EQ(nameIn(binary(xml(device)).substr(0, 40)), std::nullopt);
}

TEST_F(LinuxPropertyListsTest, aMissingKeyAndAnotherTypeHaveNone) {
    EXPECT_EQ(nameIn(xml("<dict/>")), std::nullopt);
    EXPECT_EQ(nameIn(xml("<dict><key>name</key><integer>3</integer></dict>")), std::nullopt);
    EXPECT_EQ(nameIn(xml("<array><string>name</string></array>")), std::nullopt);
}

TEST_F(LinuxPropertyListsTest, aKeyBelowTheTopIsNotTheTops) {
    EXPECT_EQ(nameIn(xml("<dict><key>device</key>" + device + "</dict>")), std::nullopt);
}

TEST_F(LinuxPropertyListsTest, anEndlessFileHasNone) {
    EXPECT_EQ(nameIn(std::string(2U << 20U, 'a')), std::nullopt);
    EXPECT_EQ(nameIn("bplist00" + std::string(100'000, '\xa1')), std::nullopt);
}

}  // namespace
}  // namespace tolvane::linuxhost
