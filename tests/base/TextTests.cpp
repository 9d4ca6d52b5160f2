#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Text.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;

TEST(Text, copiesShareTheirBytes) {
    const Text first("a path of some length");
    const Text second = first;
    EXPECT_EQ(first.view().data(), second.view().data());
    EXPECT_EQ(first, second);
}

TEST(Text, equalBytesAreEqualTexts) {
    EXPECT_EQ(Text("node"), Text(std::string("no") + "de"));
    EXPECT_NE(Text("node"), Text("nod"));
}

TEST(Text, emptyTextOwnsNothing) {
    EXPECT_TRUE(Text("").empty());
    EXPECT_EQ(Text(""), Text());
    EXPECT_EQ(Text().view(), "");
}

TEST(Text, keepsZeroBytes) { EXPECT_EQ(Text(std::string_view("a\0b", 3)).size(), 3U); }

TEST(Text, survivesAssignmentToItself) {
    Text text("kept");
    const Text& same = text;
    text = same;
    EXPECT_EQ(text, "kept");
}

TEST(TextList, givesItsTextsInOrder) {
    const TextList list{"node", "", "--port=1"};
    EXPECT_THAT(list.strings(), ElementsAre("node", "", "--port=1"));
    EXPECT_EQ(list.joined(" "), "node  --port=1");
    EXPECT_EQ(list[2], "--port=1");
}

TEST(TextList, sameBytesInOtherPlacesAreAnotherList) { EXPECT_NE((TextList{"ab", "c"}), (TextList{"a", "bc"})); }

TEST(TextList, emptyListIsEmpty) {
    EXPECT_TRUE(TextList().empty());
    EXPECT_EQ(TextList(std::vector<std::string>{}), TextList());
}

}  // namespace
}  // namespace tolvane
