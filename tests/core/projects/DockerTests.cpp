#include "core/projects/Docker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Container web{.id = "c1", .name = "shop-web-1", .workingDir = "/home/ada/shop"};

TEST(DockerParse, readsIdNameAndComposeFolder) {
    EXPECT_THAT(Docker::parse(R"({"ID":"c1","Names":"shop-web-1","Labels":"a=b,com.docker.compose.project.working_dir=)"
                              R"(/home/ada/shop,z=1","State":"running"})"
                              "\n"),
                ElementsAre(web));
}

TEST(DockerParse, aContainerOutsideComposeHasNoFolder) {
    EXPECT_THAT(Docker::parse(R"({"ID":"c2","Names":"db","Labels":""})"),
                ElementsAre(Container{.id = "c2", .name = "db", .workingDir = std::nullopt}));
    EXPECT_THAT(Docker::parse(R"({"ID":"c2","Names":"db","Labels":7})"),
                ElementsAre(Container{.id = "c2", .name = "db", .workingDir = std::nullopt}));
}

TEST(DockerParse, aNamelessContainerIsCalledByItsId) {
    EXPECT_THAT(Docker::parse(R"({"ID":"c3"})"),
                ElementsAre(Container{.id = "c3", .name = "c3", .workingDir = std::nullopt}));
}

TEST(DockerParse, aDamagedLineCostsOnlyItself) {
    EXPECT_THAT(Docker::parse("warning: no such thing\n\n{}\n[]\n{\"ID\":5}\n{\"ID\":\"c4\"}\n{\"ID\":\"c5\""),
                ElementsAre(Container{.id = "c4", .name = "c4", .workingDir = std::nullopt}));
    EXPECT_THAT(Docker::parse(""), IsEmpty());
}

TEST(DockerParse, aFolderIsCutAtItsComma) {
    const auto containers =
        Docker::parse(R"({"ID":"c6","Labels":"com.docker.compose.project.working_dir=/srv/a,b,x=y"})");
    ASSERT_EQ(containers.size(), 1U);
    EXPECT_EQ(containers[0].workingDir, "/srv/a");
}

TEST(DockerContainersIn, keepsTheFolderAndWhatIsBelowIt) {
    const auto at = [](const char* folder) { return Container{.id = folder, .name = folder, .workingDir = folder}; };
    const std::vector<Container> all = {at("/a/b"), at("/a/b/c"), at("/a/bc"), Container{.id = "x"}};
    EXPECT_THAT(Docker::containersIn(all, "/a/b"), ElementsAre(at("/a/b"), at("/a/b/c")));
}

}  // namespace
}  // namespace tolvane
