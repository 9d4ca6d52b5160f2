#include "platform/linux/applications/ApplicationIndex.h"

#include <gmock/gmock.h>

#include <chrono>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

namespace {

/// Two data folders, "home" before "shared", and programs where a test puts them.
class ApplicationIndexTest : public ::testing::Test {
protected:
    void describe(const std::string& place, const std::string& exec, const std::string& more = {}) const {
        folder.write(place, "[Desktop Entry]\nType=Application\nName=" + place + "\nExec=" + exec + "\n" + more);
    }
    void home(const std::string& name, const std::string& exec, const std::string& more = {}) const {
        describe("home/applications/" + name, exec, more);
    }
    void shared(const std::string& name, const std::string& exec, const std::string& more = {}) const {
        describe("shared/applications/" + name, exec, more);
    }
    std::string program(const std::string& name) const {
        const std::string path = folder.write(name, "#!/bin/true\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }
    ApplicationIndex index() const {
        return ApplicationIndex({.dataFolders = {folder.at("home"), folder.at("shared")},
                                 .programFolders = {folder.at("usr/bin")},
                                 .locale = {}});
    }
    static std::string idOf(const DesktopEntry* entry) { return entry == nullptr ? "nobody" : entry->identifier; }
    std::string ofExecutable(const std::string& path) const { return idOf(index().ofExecutable(path)); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(ApplicationIndexTest, withoutFoldersItIsEmpty) {
    EXPECT_EQ(index().size(), 0U);
    EXPECT_EQ(index().withIdentifier("a"), nullptr);
    EXPECT_EQ(index().atPath("/a.desktop"), nullptr);
    EXPECT_EQ(index().ofExecutable("/usr/bin/a"), nullptr);
    EXPECT_EQ(index().ofSnap("a"), nullptr);
}

TEST_F(ApplicationIndexTest, entriesAreFoundByIdentifierAndPath) {
    shared("org.example.Editor.desktop", "editor");
    const ApplicationIndex applications = index();
    const auto* entry = applications.withIdentifier("org.example.Editor");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->path, folder.at("shared/applications/org.example.Editor.desktop"));
    EXPECT_EQ(applications.atPath(entry->path), entry);
}

TEST_F(ApplicationIndexTest, foldersBelowGiveDashes) {
    shared("kde/editor.desktop", "editor");
    EXPECT_EQ(idOf(index().withIdentifier("kde-editor")), "kde-editor");
}

TEST_F(ApplicationIndexTest, theFirstFolderWins) {
    home("a.desktop", "first");
    shared("a.desktop", "second");
    EXPECT_EQ(index().withIdentifier("a")->command.front(), "first");
    EXPECT_EQ(index().size(), 1U);
}

TEST_F(ApplicationIndexTest, aHiddenEntryHidesThoseAfterIt) {
    folder.write("home/applications/a.desktop", "[Desktop Entry]\nHidden=true\n");
    shared("a.desktop", program("usr/bin/a"));
    EXPECT_EQ(index().withIdentifier("a"), nullptr);
    EXPECT_EQ(ofExecutable(folder.at("usr/bin/a")), "nobody");
}

TEST_F(ApplicationIndexTest, aProgramIsFoundOnThePathAndThroughLinks) {
    const std::string real = program("usr/lib/editor-1.2/editor-bin");
    std::filesystem::create_directories(folder.at("usr/bin"));
    std::filesystem::create_symlink(real, folder.at("usr/bin/editor"));
    shared("editor.desktop", "editor %F");
    EXPECT_EQ(ofExecutable(real), "editor");
    EXPECT_EQ(ofExecutable(real + " (deleted)"), "editor");
}

TEST_F(ApplicationIndexTest, whatLiesInTheInstallFolderBelongsToIt) {
    const std::string tool = program("editor/bin/editor.sh");
    shared("editor.desktop", tool);
    EXPECT_EQ(ofExecutable(folder.at("editor/jbr/bin/java")), "editor");
    EXPECT_EQ(ofExecutable(folder.at("editors/x")), "nobody");
    EXPECT_EQ(ofExecutable(folder.at("x")), "nobody");
}

TEST_F(ApplicationIndexTest, aFolderOfTwoApplicationsIsNobodys) {
    shared("one.desktop", program("suite/suite-one"));
    shared("two.desktop", program("suite/suite-two"));
    EXPECT_EQ(ofExecutable(folder.at("suite/helper")), "nobody");
    EXPECT_EQ(ofExecutable(folder.at("suite/suite-one")), "one");
}

TEST_F(ApplicationIndexTest, ofEntriesWithOneProgramThePlainestCounts) {
    const std::string office = program("office/office");
    shared("office-calc.desktop", office + " --calc %U");
    shared("office-start.desktop", office + " %U");
    shared("office-writer.desktop", office + " --writer %U");
    EXPECT_EQ(ofExecutable(office), "office-start");
    EXPECT_EQ(ofExecutable(folder.at("office/office.bin")), "office-start");
}

TEST_F(ApplicationIndexTest, aFolderWherePeopleWorkIsNobodys) {
    shared("mine.desktop", program("src/build/mine"));
    shared("tool.desktop", program("tools/bin/x"));
    EXPECT_EQ(ofExecutable(folder.at("src/build/mine")), "mine");
    EXPECT_EQ(ofExecutable(folder.at("src/build/test")), "nobody");
    EXPECT_EQ(ofExecutable(folder.at("tools/other")), "nobody");
}

TEST_F(ApplicationIndexTest, interpretersAreNobodysProgram) {
    shared("script.desktop", program("usr/bin/python3") + " /opt/script.py");
    const std::string link = folder.at("usr/bin/gadget");
    std::filesystem::create_symlink(folder.at("usr/bin/python3"), link);
    shared("gadget.desktop", "gadget");
    EXPECT_EQ(ofExecutable(folder.at("usr/bin/python3")), "nobody");
    EXPECT_NE(index().withIdentifier("script"), nullptr);
}

TEST_F(ApplicationIndexTest, entriesOutsideOfMenusAndInTerminalsHaveNoProgram) {
    shared("helper.desktop", program("usr/bin/helper"), "NoDisplay=true\n");
    shared("vim.desktop", program("usr/bin/vim"), "Terminal=true\n");
    EXPECT_EQ(ofExecutable(folder.at("usr/bin/helper")), "nobody");
    EXPECT_EQ(ofExecutable(folder.at("usr/bin/vim")), "nobody");
    EXPECT_NE(index().withIdentifier("helper"), nullptr);
}

TEST_F(ApplicationIndexTest, brokenAndMissingProgramsHarmNothing) {
    shared("quote.desktop", "\"/opt/unclosed");
    shared("none.desktop", "");
    shared("gone.desktop", "/nowhere/app");
    shared("notOnPath.desktop", "no-such-program-anywhere");
    shared("env.desktop", "env");
    EXPECT_EQ(index().size(), 5U);
    EXPECT_EQ(ofExecutable("/nowhere/app"), "nobody");
    EXPECT_EQ(ofExecutable(""), "nobody");
    EXPECT_EQ(ofExecutable("relative"), "nobody");
}

TEST_F(ApplicationIndexTest, aSnapHasItsMainEntryOrItsOnlyOne) {
    shared("firefox_firefox.desktop", "x");
    shared("firefox_profiles.desktop", "x");
    shared("tool_window.desktop", "x");
    shared("two_a.desktop", "x");
    shared("two_b.desktop", "x");
    EXPECT_EQ(idOf(index().ofSnap("firefox")), "firefox_firefox");
    EXPECT_EQ(idOf(index().ofSnap("tool")), "tool_window");
    EXPECT_EQ(idOf(index().ofSnap("two")), "nobody");
    EXPECT_EQ(idOf(index().ofSnap("core22")), "nobody");
}

TEST_F(ApplicationIndexTest, isOutdatedOnceFilesComeOrGo) {
    shared("a.desktop", "a");
    std::filesystem::last_write_time(folder.at("shared/applications"),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    const ApplicationIndex before = index();
    EXPECT_FALSE(before.isOutdated());
    shared("b.desktop", "b");
    EXPECT_TRUE(before.isOutdated());
    EXPECT_FALSE(index().isOutdated());
}

TEST_F(ApplicationIndexTest, isOutdatedOnceAMissingFolderComes) {
    const ApplicationIndex before = index();
    EXPECT_FALSE(before.isOutdated());
    home("a.desktop", "a");
    EXPECT_TRUE(before.isOutdated());
}

TEST_F(ApplicationIndexTest, linksInCirclesEnd) {
    shared("a.desktop", "a");
    std::filesystem::create_directory_symlink(folder.at("shared/applications"), folder.at("shared/applications/loop"));
    EXPECT_NE(index().withIdentifier("a"), nullptr);
}

TEST_F(ApplicationIndexTest, aThousandEntriesAreRead) {
    for (int number = 0; number < 1000; ++number)
        shared("app" + std::to_string(number) + ".desktop", "program" + std::to_string(number));
    EXPECT_EQ(index().size(), 1000U);
}

TEST_F(ApplicationIndexTest, aWindowsNameIsTheIdentifierElseTheAnnouncedClassElseAlike) {
    shared("org.example.Editor.desktop", "editor");
    shared("debian-xterm.desktop", "xterm", "StartupWMClass=XTerm\n");
    shared("org.example.XTERM.desktop", "other");
    shared("org.example.Helper.desktop", "helper", "NoDisplay=true\n");
    const ApplicationIndex applications = index();
    EXPECT_EQ(idOf(applications.ofWindow("org.example.Editor")), "org.example.Editor");
    EXPECT_EQ(idOf(applications.ofWindow("ORG.example.editor")), "org.example.Editor");
    EXPECT_EQ(idOf(applications.ofWindow("editor")), "org.example.Editor");
    EXPECT_EQ(idOf(applications.ofWindow("XTerm")), "debian-xterm");
    EXPECT_EQ(idOf(applications.ofWindow("helper")), "nobody");
    EXPECT_EQ(idOf(applications.ofWindow("unknown")), "nobody");
    EXPECT_EQ(idOf(applications.ofWindow("")), "nobody");
}

}  // namespace tolvane::linuxhost
