#include "platform/linux/text/DesktopEntry.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::optional<DesktopEntry> read(const std::string& text, const std::string& locale = {}) {
    const TemporaryFolder folder;
    return readDesktopEntry(folder.write("a.desktop", text), "a", locale);
}

}  // namespace

TEST(DesktopEntry, readsWhatDescribesAnApplication) {
    const auto entry = read(
        "# a comment\n[Desktop Entry]\nType=Application\nName=XTerm\nIcon=mini.xterm.png\nExec=xterm -ls %U\n"
        "Categories=System;TerminalEmulator;\n[Desktop Action new]\nName=New\nExec=other\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->identifier, "a");
    EXPECT_EQ(entry->name, "XTerm");
    EXPECT_EQ(entry->icon, "mini.xterm");
    EXPECT_THAT(entry->command, ElementsAre("xterm", "-ls"));
    EXPECT_TRUE(entry->isTerminalEmulator);
    EXPECT_FALSE(entry->needsTerminal || entry->notDisplayed || entry->hidden);
}

TEST(DesktopEntry, readsItsMarks) {
    const auto entry = read("[Desktop Entry]\nType=Application\nName=A\nExec=a\nNoDisplay=true\nTerminal=true\n");
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->notDisplayed);
    EXPECT_TRUE(entry->needsTerminal);
    EXPECT_FALSE(entry->isTerminalEmulator);
}

TEST(DesktopEntry, aHiddenEntryNeedsNothingElse) {
    const auto entry = read("[Desktop Entry]\nHidden=true\n");
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->hidden);
}

TEST(DesktopEntry, namesComeInTheLanguageAskedFor) {
    const std::string text = "[Desktop Entry]\nType=Application\nName=Files\nName[de]=Dateien\nExec=x\n";
    EXPECT_EQ(read(text, "de_DE.UTF-8")->name, "Dateien");
    EXPECT_EQ(read(text, "fr_FR.UTF-8")->name, "Files");
}

TEST(DesktopEntry, anIconsPathStays) {
    EXPECT_EQ(read("[Desktop Entry]\nType=Application\nName=A\nIcon=/opt/a/a.png\n")->icon, "/opt/a/a.png");
    EXPECT_EQ(read("[Desktop Entry]\nType=Application\nName=A\nIcon=org.example.App\n")->icon, "org.example.App");
    EXPECT_EQ(read("[Desktop Entry]\nType=Application\nName=A\n")->icon, "");
}

TEST(DesktopEntry, whatIsNoApplicationIsNone) {
    for (const char* text : {"", "rubbish", "[Desktop Entry]\n", "[Desktop Entry]\nType=Link\nName=A\n",
                             "[Desktop Entry]\nType=Application\n", "[Other]\nType=Application\nName=A\n",
                             "[Desktop Entry\nType=Application", "\xff\xfe\x00[Desktop Entry]"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
    EXPECT_EQ(readDesktopEntry("/nowhere/a.desktop", "a"), std::nullopt);
}

TEST(WordsOfExec, quotesHoldWordsTogetherAndPlaceholdersGo) {
    EXPECT_THAT(wordsOfExec("\"/opt/My App/app\" --open %u --x=%f"),
                ElementsAre("/opt/My App/app", "--open", "--x=%f"));
    EXPECT_THAT(wordsOfExec("app %% %F"), ElementsAre("app", "%%"));
}

TEST(WordsOfExec, aBrokenLineHasNone) {
    EXPECT_THAT(wordsOfExec("\"/opt/app"), IsEmpty());
    EXPECT_THAT(wordsOfExec(""), IsEmpty());
    EXPECT_THAT(wordsOfExec("   "), IsEmpty());
    EXPECT_THAT(wordsOfExec("app \\"), IsEmpty());
}

TEST(ProgramOfCommand, standsBehindStartersAndAssignments) {
    EXPECT_EQ(programOfCommand({"app", "-x"}), "app");
    EXPECT_EQ(programOfCommand({"env", "A=b", "/snap/bin/firefox"}), "/snap/bin/firefox");
    EXPECT_EQ(programOfCommand({"/usr/bin/env", "-u", "app"}), "app");
    EXPECT_EQ(programOfCommand({"nice", "app"}), "app");
    EXPECT_EQ(programOfCommand({"/opt/a=b/app"}), "/opt/a=b/app");
    EXPECT_EQ(programOfCommand({}), "");
    EXPECT_EQ(programOfCommand({"env"}), "");
}

TEST(NoIdentity, interpretersAndCarriersAreNobody) {
    for (const char* name : {"sh", "bash", "python3", "python3.11", "python", "node", "java", "electron", "electron25",
                             "perl5.36", "flatpak", "env", "wine64"})
        EXPECT_TRUE(isNoIdentity(name)) << name;
}

TEST(NoIdentity, otherProgramsAreThemselves) {
    for (const char* name :
         {"", "firefox", "code", "pythonista", "electron-mail", "nodejs-editor", "javascript", "shotwell"})
        EXPECT_FALSE(isNoIdentity(name)) << name;
}

}  // namespace tolvane::linuxhost
