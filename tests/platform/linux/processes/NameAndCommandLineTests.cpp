#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "platform/linux/processes/CommandLine.h"
#include "platform/linux/processes/ProcessName.h"
#include "platform/linux/text/RepairedText.h"

namespace tolvane::linuxhost {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::string_view nameOf(std::string_view comm, std::string_view executable,
                        const std::vector<std::string_view>& arguments = {}) {
    return processName(comm, executable, arguments);
}

/// A disk with npm and a few other programs beside node.
TitleLookup disk() {
    static const std::map<std::string, std::string> heads = {{"/opt/node/bin/npm", "#!/usr/bin/env node\nrequire"},
                                                             {"/usr/bin/yarn", "#!/usr/bin/node\n"},
                                                             {"/usr/bin/wrapped", "#!/bin/sh\nexec node x.js \"$@\"\n"},
                                                             {"/usr/bin/sidekiq", "#!/usr/bin/env ruby\n"},
                                                             {"/usr/bin/puma", "#!/usr/bin/env -S ruby --yjit\n"},
                                                             {"/usr/bin/redis-server",
                                                              "\x7f"
                                                              "ELF"}};
    return {.head = [](const std::string& path) -> std::optional<std::string> {
                const auto found = heads.find(path);
                return found == heads.end() ? std::nullopt : std::optional(found->second);
            },
            .folders = searchFolders("/nowhere:relative::/opt/node/bin", "/usr/bin/node")};
}

std::vector<std::string> titleOf(std::string_view title, std::string_view executable) {
    return argumentsOfTitle(title, executable, disk());
}

}  // namespace

TEST(ProcessName, aShortNameIsWhole) {
    EXPECT_EQ(nameOf("node", "/usr/bin/node"), "node");
    EXPECT_EQ(nameOf("python3", "/usr/bin/python3.11"), "python3");
    EXPECT_EQ(nameOf("renamed", "/usr/bin/python3"), "renamed");
}

TEST(ProcessName, aCutNameIsWholeAgainFromTheExecutable) {
    EXPECT_EQ(nameOf("gnome-terminal-", "/usr/libexec/gnome-terminal-server"), "gnome-terminal-server");
    EXPECT_EQ(nameOf("fifteen-letters", "/usr/bin/fifteen-letters"), "fifteen-letters");
}

TEST(ProcessName, aCutNameOfAScriptIsWholeAgainFromTheArguments) {
    EXPECT_EQ(nameOf("unattended-upgr", "/usr/bin/python3.11",
                     {"/usr/bin/python3", "/usr/share/unattended-upgrades/unattended-upgrade-shutdown"}),
              "unattended-upgrade-shutdown");
    EXPECT_EQ(nameOf("a-rather-long-n", "", {"/opt/a-rather-long-name"}), "a-rather-long-name");
}

TEST(ProcessName, aCutNameThatNothingCompletesStays) {
    EXPECT_EQ(nameOf("Isolated Web Co", "/usr/lib/firefox/firefox", {"firefox", "-contentproc"}), "Isolated Web Co");
    EXPECT_EQ(nameOf("fifteen-letters", ""), "fifteen-letters");
}

TEST(ProcessName, aNameThatSaysNothingGivesWayToTheExecutables) {
    EXPECT_EQ(nameOf("MainThread", "/usr/bin/node"), "node");
    EXPECT_EQ(nameOf("exe", "/opt/editor/editor"), "editor");
    EXPECT_EQ(nameOf("7", "/usr/bin/tool"), "tool");
    EXPECT_EQ(nameOf("", "/usr/bin/tool"), "tool");
    EXPECT_EQ(nameOf("MainThread", ""), "MainThread");
    EXPECT_EQ(nameOf("", ""), "");
}

TEST(ProcessName, theNameOfAFirstThreadGivesWayHoweverItIsWritten) {
    EXPECT_EQ(nameOf("node-MainThread", "/usr/bin/node"), "node");
    EXPECT_EQ(nameOf("Main Thread", "/opt/tool/tool"), "tool");
    EXPECT_EQ(nameOf("main_thread", "/opt/tool/tool"), "tool");
    EXPECT_EQ(nameOf("electron-MainTh", "/opt/editor/electron"), "electron");
    EXPECT_EQ(nameOf("node-MainThread", ""), "node");
    EXPECT_FALSE(isCutShort("node-MainThread", "/usr/bin/node"));
}

TEST(ProcessName, aScriptWithMainInItsNameKeepsIt) {
    EXPECT_EQ(nameOf("shop-main", "/usr/bin/python3.11", {"/usr/bin/python3", "/srv/shop-main"}), "shop-main");
    EXPECT_EQ(nameOf("site-maintainer", "/usr/bin/python3.11", {"python3", "/srv/site-maintainer"}), "site-maintainer");
    EXPECT_EQ(nameOf("my-shop-mainten", "/usr/bin/python3.11", {"python3", "/srv/my-shop-maintenance"}),
              "my-shop-maintenance");
}

TEST(ProcessName, argumentsAreOnlyWantedForACutName) {
    EXPECT_FALSE(isCutShort("node", "/usr/bin/node"));
    EXPECT_FALSE(isCutShort("gnome-terminal-", "/usr/libexec/gnome-terminal-server"));
    EXPECT_TRUE(isCutShort("unattended-upgr", "/usr/bin/python3.11"));
}

TEST(RepairedText, replacesWhatIsNotUtf8AndEndsAtANul) {
    EXPECT_EQ(repairedText("plain"), "plain");
    EXPECT_EQ(repairedText("a\xff"
                           "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(repairedText("a\0b"s), "a");
    EXPECT_EQ(repairedText(""), "");
}

TEST(RepairedText, anEqualTextStaysTheSharedOne) {
    Text text = "folder";
    const char* before = text.view().data();
    assign(text, "folder");
    EXPECT_EQ(text.view().data(), before);
    assign(text, "other");
    EXPECT_EQ(text, "other");
}

TEST(CommandLine, splitsAtEachNul) {
    EXPECT_THAT(splitArguments("node\0server.js\0"s), ElementsAre("node", "server.js"));
    EXPECT_THAT(splitArguments("node\0\0x"s), ElementsAre("node", "", "x"));
    EXPECT_THAT(splitArguments(""), ElementsAre());
}

TEST(CommandLine, findsAVariable) {
    EXPECT_EQ(environmentValue("PATHS=1\0PATH=/bin\0"s, "PATH"), "/bin");
    EXPECT_EQ(environmentValue("PATH=\0"s, "PATH"), "");
    EXPECT_FALSE(environmentValue("XPATH=/bin\0"s, "PATH"));
    EXPECT_FALSE(environmentValue("", "PATH"));
}

TEST(CommandLine, knowsATitle) {
    EXPECT_TRUE(isTitle({"npm run dev", "", ""}, "/usr/bin/node"));
    EXPECT_TRUE(isTitle({"npm run dev"}, "/usr/bin/node"));
    EXPECT_TRUE(isTitle({"webpack", ""}, "/usr/bin/node"));
    EXPECT_TRUE(isTitle({"/opt/browser/browser --type=renderer"}, "/opt/browser/browser"));
}

TEST(CommandLine, ordinaryArgumentsAreNoTitle) {
    EXPECT_FALSE(isTitle({}, "/usr/bin/node"));
    EXPECT_FALSE(isTitle({""}, "/usr/bin/node"));
    EXPECT_FALSE(isTitle({"node"}, "/usr/bin/node"));
    EXPECT_FALSE(isTitle({"node", ""}, "/usr/bin/node"));
    EXPECT_FALSE(isTitle({"node", "my file.js"}, "/usr/bin/node"));
    EXPECT_FALSE(isTitle({"/opt/My App/app"}, "/opt/My App/app"));
    EXPECT_FALSE(isTitle({"-bash"}, "/usr/bin/bash"));
}

TEST(CommandLine, aTitleThatNamesAScriptBecomesTheCommand) {
    EXPECT_THAT(titleOf("npm run dev", "/usr/bin/node"), ElementsAre("node", "/opt/node/bin/npm", "run", "dev"));
    EXPECT_THAT(titleOf("npm run dev   ", "/usr/bin/node"), ElementsAre("node", "/opt/node/bin/npm", "run", "dev"));
    EXPECT_THAT(titleOf("npm run dev:web", "/usr/bin/node"),
                ElementsAre("node", "/opt/node/bin/npm", "run", "dev:web"));
    EXPECT_THAT(titleOf("yarn start", "/usr/bin/node"), ElementsAre("node", "/usr/bin/yarn", "start"));
}

TEST(CommandLine, aTitleThatNamesNoScriptOfThisInterpreterStays) {
    EXPECT_THAT(titleOf("npx vite", "/usr/bin/node"), ElementsAre("npx vite"));
    EXPECT_THAT(titleOf("wrapped start", "/usr/bin/node"), ElementsAre("wrapped start"));
    EXPECT_THAT(titleOf("npm run dev", "/usr/bin/bun"), ElementsAre("npm run dev"));
    EXPECT_THAT(titleOf("bin/npm run", "/usr/bin/node"), ElementsAre("bin/npm run"));
}

TEST(CommandLine, aTitleThatTellsAStateStays) {
    EXPECT_THAT(titleOf("nginx: worker process", "/usr/sbin/nginx"), ElementsAre("nginx: worker process"));
    EXPECT_THAT(titleOf("postgres: ada app [local] idle", "/usr/lib/postgresql/15/bin/postgres"),
                ElementsAre("postgres: ada app [local] idle"));
    EXPECT_THAT(titleOf("redis-server 127.0.0.1:6379", "/usr/bin/redis-server"),
                ElementsAre("redis-server 127.0.0.1:6379"));
    EXPECT_THAT(titleOf("sidekiq 7.1.0 shop [0 of 5 busy]", "/usr/bin/ruby"),
                ElementsAre("sidekiq 7.1.0 shop [0 of 5 busy]"));
    EXPECT_THAT(titleOf("puma worker -C x", "/usr/bin/ruby"), ElementsAre("puma worker -C x"));
}

TEST(CommandLine, aProgramThatJoinedItsArgumentsGetsThemBack) {
    EXPECT_THAT(titleOf("/opt/browser/browser --type=renderer --id=5", "/opt/browser/browser"),
                ElementsAre("/opt/browser/browser", "--type=renderer", "--id=5"));
}

TEST(CommandLine, readsWhomAScriptIsFor) {
    EXPECT_TRUE(isScriptFor("#!/usr/bin/env node\n", "node"));
    EXPECT_TRUE(isScriptFor("#! /usr/bin/node --flag\n", "node"));
    EXPECT_TRUE(isScriptFor("#!/usr/bin/env -S ruby --yjit\n", "ruby"));
    EXPECT_FALSE(isScriptFor("#!/bin/sh\nnode", "node"));
    EXPECT_FALSE(isScriptFor("#!", "node"));
    EXPECT_FALSE(isScriptFor("#!/usr/bin/env\n", "node"));
    EXPECT_FALSE(isScriptFor("#!/usr/bin/env\n", ""));
    EXPECT_FALSE(isScriptFor("", "node"));
}

TEST(CommandLine, keepsEmptyArgumentsBehindTheFirst) {
    EXPECT_THAT(argumentTexts({"x", "", "y"}).strings(), ElementsAre("x", "", "y"));
    EXPECT_THAT(argumentTexts({"", "", "a"}).strings(), ElementsAre("a"));
    EXPECT_THAT(argumentTexts({"", ""}).strings(), IsEmpty());
    EXPECT_THAT(argumentTexts({}).strings(), IsEmpty());
}

TEST(CommandLine, argumentsThatAreNotUtf8AreRepairedOneByOne) {
    EXPECT_THAT(argumentTexts({"x", "caf\xE9", "\xE2\x82", "y"}).strings(),
                ElementsAre("x", "caf\uFFFD", "\uFFFD", "y"));
}

TEST(CommandLine, anEnvironmentIsItsEntriesWithoutEmptyOnes) {
    EXPECT_THAT(environmentTexts("A=1\0B=2\0"s), ElementsAre("A=1", "B=2"));
    EXPECT_THAT(environmentTexts("\0A=1\0\0B=\xC3"s), ElementsAre("A=1", "B=\uFFFD"));
    EXPECT_THAT(environmentTexts(""), IsEmpty());
}

}  // namespace tolvane::linuxhost
