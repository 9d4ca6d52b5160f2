#include "core/sampling/ProcSample.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

ProcSample named(std::string_view name, TextList args) {
    ProcSample sample;
    sample.name = name;
    sample.args = std::move(args);
    return sample;
}

ProcSample at(std::string_view path) {
    ProcSample sample;
    sample.path = path;
    return sample;
}

TEST(ProcSample, commandLineJoinsTheArgumentsWithBlanks) {
    EXPECT_EQ(named("node", {"node", "a b", "--c"}).commandLine(), "node a b --c");
}

TEST(ProcSample, commandLineWithoutArgumentsIsThePath) {
    EXPECT_EQ(at("/opt/node").commandLine(), "/opt/node");
    EXPECT_EQ(at("").commandLine(), "");
}

TEST(ProcSample, systemProgramsStandBelowTheFivePrefixes) {
    for (const auto* path : {"/System/x", "/usr/bin/x", "/bin/x", "/sbin/x", "/Library/Apple/x"}) {
        EXPECT_TRUE(at(path).isSystem()) << path;
    }
}

TEST(ProcSample, otherProgramsAreTheUsers) {
    for (const auto* path : {"", "/opt/x", "/USR/bin/x", "/usrlocal/x", "/home/usr/bin/x", "usr/bin/x", "/usr"}) {
        EXPECT_FALSE(at(path).isSystem()) << path;
    }
}

TEST(ProcSample, hostKnowsBetterThanThePath) {
    auto sample = at("/usr/bin/node");
    sample.hostSaysSystem = false;
    EXPECT_FALSE(sample.isSystem());
    sample = at("/opt/x");
    sample.hostSaysSystem = true;
    EXPECT_TRUE(sample.isSystem());
}

TEST(ProcSample, ruleMatchIsTheScript) {
    EXPECT_EQ(named("node", {"node", "/srv/app/server.js", "--port"}).ruleMatch(), "server.js");
}

TEST(ProcSample, ruleMatchPassesOverOptionsWithPaths) {
    EXPECT_EQ(named("node", {"node", "--require=/x/y.js", "/a/b.js"}).ruleMatch(), "b.js");
}

TEST(ProcSample, ruleMatchIsTheNameWithoutAScript) {
    EXPECT_EQ(named("zsh", {}).ruleMatch(), "zsh");
    EXPECT_EQ(named("zsh", {"/bin/zsh"}).ruleMatch(), "zsh");
    EXPECT_EQ(named("python3", {"python3", "-m", "http.server"}).ruleMatch(), "python3");
}

TEST(ProcSample, packedMemoryCountsAtTheRatio) {
    ProcSample sample;
    sample.footprint = 1000;
    sample.compressed = 400;
    EXPECT_EQ(sample.inRAM(4.0), 700U);
    EXPECT_EQ(sample.inRAM(0.5), 1000U);
    sample.compressed = 2000;
    EXPECT_EQ(sample.inRAM(2.0), 500U);
}

}  // namespace
}  // namespace tolvane
