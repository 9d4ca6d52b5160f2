#include "app/rows/TableRow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using fakes::appRow;
using fakes::MiB;
using fakes::projectRow;
using fakes::row;
using fakes::sessionRow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

RowNames names() {
    return {.application =
                [](std::string_view path) {
                    return path == "/Applications/Slack.app" ? std::string("Slack") : "App " + std::string(path);
                },
            .home = "/home/ada"};
}

std::vector<TableRow> build(const std::vector<ProcRow>& rows, Grouping grouping, double ratio = 1) {
    return TableRow::build(rows, grouping, ratio, names());
}

template <typename Member>
auto each(const std::vector<TableRow>& tableRows, Member member) {
    std::vector<std::decay_t<std::invoke_result_t<Member, const TableRow&>>> values;
    std::ranges::transform(tableRows, std::back_inserter(values), member);
    return values;
}

auto ids(const std::vector<TableRow>& tableRows) { return each(tableRows, &TableRow::id); }
auto titles(const std::vector<TableRow>& tableRows) { return each(tableRows, &TableRow::title); }

TEST(TableRow, isMadeOfOneProcess) {
    auto process = appRow(12, "helper", "/Applications/Slack.app", 300 * MiB);
    process.sample.compressed = 100 * MiB;
    process.sample.swapIns = 7;
    process.cpuPercent = 12.5;
    const auto tableRows = build({process}, Grouping::all, 2);
    ASSERT_EQ(tableRows.size(), 1U);
    const TableRow expected{.id = "pid:12",
                            .title = "helper",
                            .detail = "Slack",
                            .appPath = "/Applications/Slack.app",
                            .pids = {12},
                            .memory = 300 * MiB,
                            .inRAM = 250 * MiB,
                            .compressed = 100 * MiB,
                            .swapIns = 7,
                            .cpu = 12.5,
                            .unusedSince = process.unusedSince,
                            .started = process.sample.startTime,
                            .children = std::nullopt};
    EXPECT_EQ(tableRows.front(), expected);
}

TEST(TableRow, inRAMNeverCountsARatioBelowOne) {
    auto process = row(1, "a", 100);
    process.sample.compressed = 50;
    EXPECT_EQ(build({process}, Grouping::all, 0.5).front().inRAM, 100U);
}

TEST(TableRow, inRAMCountsNoMoreThanTheFootprintAsCompressed) {
    auto process = row(1, "a", 100);
    process.sample.compressed = 500;
    EXPECT_EQ(build({process}, Grouping::all, 3).front().inRAM, 33U);
}

TEST(TableRowByAll, keepsTheOrderOfTheRows) {
    const auto tableRows = build({row(3, "c"), row(1, "a"), row(2, "a")}, Grouping::all);
    EXPECT_THAT(ids(tableRows), ElementsAre("pid:3", "pid:1", "pid:2"));
}

TEST(TableRowByAll, namesTheOwnerBesideTheProcess) {
    EXPECT_EQ(build({sessionRow(1, "a", "fix login")}, Grouping::all).front().detail, "fix login");
    EXPECT_EQ(build({projectRow(1, "a", "/home/ada/shop")}, Grouping::all).front().detail, "~/shop");
    EXPECT_EQ(build({appRow(1, "a", "/Applications/Slack.app")}, Grouping::all).front().detail, "Slack");
    EXPECT_EQ(build({row(1, "a")}, Grouping::all).front().detail, std::nullopt);
}

TEST(TableRowOwner, isTheFirstThatIsSet) {
    auto process = sessionRow(1, "a", "session");
    process.project = Text("/srv/shop");
    process.appPath = Text("/Applications/Slack.app");
    EXPECT_EQ(TableRow::owner(process, names()), "session");
    process.claudeSession.reset();
    EXPECT_EQ(TableRow::owner(process, names()), "/srv/shop");
    process.project.reset();
    EXPECT_EQ(TableRow::owner(process, names()), "Slack");
    process.appPath.reset();
    EXPECT_EQ(TableRow::owner(process, names()), std::nullopt);
}

TEST(TableRowByApps, foldsTheProcessesOfABundle) {
    const auto tableRows = build({appRow(1, "Slack", "/Applications/Slack.app"), row(2, "node"),
                                  appRow(3, "Slack Helper", "/Applications/Slack.app")},
                                 Grouping::apps);
    ASSERT_THAT(ids(tableRows), ElementsAre("/Applications/Slack.app", "pid:2"));
    EXPECT_EQ(tableRows[0].title, "Slack");
    EXPECT_EQ(tableRows[0].detail, "2 processes");
    EXPECT_EQ(tableRows[0].appPath, "/Applications/Slack.app");
    EXPECT_THAT(ids(*tableRows[0].children), ElementsAre("pid:1", "pid:3"));
    EXPECT_THAT(titles(*tableRows[0].children), ElementsAre("Slack", "Slack Helper"));
}

TEST(TableRowByApps, foldsProcessesOfOneNameOutsideApps) {
    const auto tableRows = build({row(1, "node"), row(2, "puma"), row(3, "node")}, Grouping::apps);
    ASSERT_THAT(ids(tableRows), ElementsAre("cmd:node", "pid:2"));
    EXPECT_EQ(tableRows[0].title, "node");
    EXPECT_EQ(tableRows[0].detail, "2 processes");
    EXPECT_EQ(tableRows[0].appPath, std::nullopt);
}

TEST(TableRowByApps, aLoneProcessOfAnAppIsAPlainRowOfTheAppsName) {
    const auto tableRows = build({appRow(7, "slack-bin", "/Applications/Slack.app")}, Grouping::apps);
    ASSERT_THAT(ids(tableRows), ElementsAre("pid:7"));
    EXPECT_EQ(tableRows[0].title, "Slack");
    EXPECT_EQ(tableRows[0].appPath, "/Applications/Slack.app");
    EXPECT_EQ(tableRows[0].children, std::nullopt);
}

TEST(TableRowByApps, saysWhereALooseProcessBelongs) {
    EXPECT_EQ(build({sessionRow(1, "a", "session")}, Grouping::apps).front().detail, "session");
    EXPECT_EQ(build({projectRow(1, "a", "/home/ada/shop")}, Grouping::apps).front().detail, "~/shop");
    EXPECT_EQ(build({appRow(1, "a", "/Applications/Slack.app")}, Grouping::apps).front().detail, std::nullopt);
}

TEST(TableRowByApps, anAppAndACommandOfOneNameStayApart) {
    const auto tableRows =
        build({appRow(1, "a", "/x"), row(2, "/x"), appRow(3, "b", "/x"), row(4, "/x")}, Grouping::apps);
    EXPECT_THAT(ids(tableRows), ElementsAre("/x", "cmd:/x"));
}

TEST(TableRowByProjects, foldsSessionsProjectsAppsAndTheRest) {
    const auto tableRows =
        build({row(1, "launchd"), sessionRow(2, "claude", "fix login"), projectRow(3, "node", "/home/ada/shop"),
               appRow(4, "Slack", "/Applications/Slack.app"), appRow(5, "Slack Helper", "/Applications/Slack.app"),
               projectRow(6, "puma", "/home/ada/shop"), row(7, "cron")},
              Grouping::projects);
    ASSERT_THAT(ids(tableRows),
                ElementsAre("other", "claude:fix login", "project:/home/ada/shop", "/Applications/Slack.app"));
    EXPECT_THAT(titles(tableRows), ElementsAre("Other processes", "fix login", "shop", "Slack"));
    EXPECT_THAT(each(tableRows, [](const TableRow& tableRow) { return tableRow.detail.value_or("none"); }),
                ElementsAre("2 processes", "Claude session", "~/shop", "2 processes"));
    EXPECT_THAT(each(tableRows, [](const TableRow& tableRow) { return tableRow.appPath.value_or("none"); }),
                ElementsAre("none", "none", "none", "/Applications/Slack.app"));
}

TEST(TableRowByProjects, aSessionComesBeforeItsProject) {
    auto process = sessionRow(1, "claude", "fix login");
    process.project = Text("/home/ada/shop");
    EXPECT_THAT(ids(build({process}, Grouping::projects)), ElementsAre("claude:fix login"));
}

TEST(TableRowByProjects, aLoneProcessOfAProjectIsStillAGroup) {
    const auto tableRows = build({projectRow(3, "node", "/home/ada/shop")}, Grouping::projects);
    ASSERT_THAT(ids(tableRows), ElementsAre("project:/home/ada/shop"));
    ASSERT_TRUE(tableRows[0].children);
    EXPECT_THAT(ids(*tableRows[0].children), ElementsAre("pid:3"));
    EXPECT_EQ(tableRows[0].children->front().detail, std::nullopt);
}

TEST(TableRowByProjects, aLoneProcessOfNobodyIsItself) {
    const auto tableRows = build({row(9, "cron")}, Grouping::projects);
    ASSERT_THAT(ids(tableRows), ElementsAre("pid:9"));
    EXPECT_EQ(tableRows[0].title, "cron");
}

TEST(TableRowByProjects, aLoneProcessOfAnAppHasTheAppsName) {
    const auto tableRows = build({appRow(4, "slack-bin", "/Applications/Slack.app")}, Grouping::projects);
    ASSERT_THAT(ids(tableRows), ElementsAre("pid:4"));
    EXPECT_EQ(tableRows[0].title, "Slack");
}

TEST(TableRowGroup, takesTheTitleOfTheFirstRowSeen) {
    int asked = 0;
    const RowNames counting{.application = [&](std::string_view) { return "Name " + std::to_string(++asked); }};
    const auto tableRows = TableRow::build(
        {appRow(1, "a", "/x.app"), appRow(2, "b", "/x.app"), appRow(3, "c", "/x.app")}, Grouping::apps, 1, counting);
    EXPECT_THAT(titles(tableRows), ElementsAre("Name 1"));
    EXPECT_EQ(asked, 1);
}

TEST(TableRowGroup, sumsItsChildren) {
    auto a = row(1, "node", 100);
    a.cpuPercent = 10;
    a.sample.compressed = 40;
    a.sample.swapIns = 1;
    a.unusedSince = Date{Seconds{10}};
    a.sample.startTime = Date{Seconds{7}};
    auto b = row(2, "node", 200);
    b.cpuPercent = 5.5;
    b.sample.compressed = 60;
    b.sample.swapIns = 2;
    b.unusedSince = Date{Seconds{20}};
    b.sample.startTime = Date{Seconds{5}};
    const auto tableRows = build({a, b}, Grouping::apps, 2);
    ASSERT_EQ(tableRows.size(), 1U);
    const auto& group = tableRows.front();
    EXPECT_THAT(group.pids, ElementsAre(1, 2));
    EXPECT_EQ(group.memory, 300U);
    EXPECT_EQ(group.inRAM, 80U + 170U);
    EXPECT_EQ(group.compressed, 100U);
    EXPECT_EQ(group.swapIns, 3U);
    EXPECT_DOUBLE_EQ(group.cpu, 15.5);
    EXPECT_EQ(group.unusedSince, Date{Seconds{20}});
    EXPECT_EQ(group.started, Date{Seconds{5}});
}

TEST(TableRowGroup, ofNothingWasLastUsedInTheDistantPast) {
    const auto group = TableRow::group("other", "Other processes", std::nullopt, std::nullopt, {});
    EXPECT_EQ(group.unusedSince, distantPast);
    EXPECT_EQ(group.started, std::nullopt);
    ASSERT_TRUE(group.children);
    EXPECT_THAT(*group.children, IsEmpty());
    EXPECT_THAT(group.pids, IsEmpty());
}

TEST(TableRowGroup, hasTheEarliestStartThatIsKnown) {
    TableRow unknown{.id = "a"};
    TableRow late{.id = "b", .started = Date{Seconds{9}}};
    EXPECT_EQ(TableRow::group("g", "g", {}, {}, {unknown, late}).started, Date{Seconds{9}});
    EXPECT_EQ(TableRow::group("g", "g", {}, {}, {unknown}).started, std::nullopt);
}

ProcSample sampleOf(std::string_view path, std::string_view name = "name") {
    ProcSample sample;
    sample.path = path;
    sample.name = name;
    return sample;
}

TEST(ProcessName, knowsTheAgentByItsFolder) {
    EXPECT_EQ(TableRow::processName(sampleOf("/home/ada/.local/share/claude/versions/2.0.1", "2.0.1")), "claude");
    EXPECT_EQ(TableRow::processName(sampleOf("/home/ada/.local/share/claude/other/2.0.1", "2.0.1")), "2.0.1");
}

TEST(ProcessName, explainsTheBrowsersHelpers) {
    const std::string folder = "/System/Library/Frameworks/WebKit.framework/XPCServices/";
    EXPECT_EQ(TableRow::processName(sampleOf(folder + "com.apple.WebKit.WebContent")), "Web pages (WebKit)");
    EXPECT_EQ(TableRow::processName(sampleOf(folder + "com.apple.WebKit.WebContent.Development")),
              "Web pages (WebKit)");
    EXPECT_EQ(TableRow::processName(sampleOf(folder + "com.apple.WebKit.Networking")), "Web networking (WebKit)");
    EXPECT_EQ(TableRow::processName(sampleOf(folder + "com.apple.WebKit.GPU")), "Web graphics (WebKit)");
    EXPECT_EQ(TableRow::processName(sampleOf("/x/com.apple.SafariPlatformSupport.Helper")), "Safari helpers");
    EXPECT_EQ(TableRow::processName(sampleOf("/x/com.apple.WebKit.Other")), "name");
    EXPECT_EQ(TableRow::processName(sampleOf("/com.apple.WebKit.GPU/tool")), "name");
}

TEST(ProcessName, isTheShortNameOtherwise) {
    EXPECT_EQ(TableRow::processName(sampleOf("/usr/bin/node", "node")), "node");
    EXPECT_EQ(TableRow::processName(sampleOf("", "kernel_task")), "kernel_task");
}

TEST(ProcessName, isWhatLooseProcessesAreFoldedBy) {
    auto a = row(1, "2.0.1");
    a.sample.path = "/home/ada/.local/share/claude/versions/2.0.1";
    auto b = row(2, "2.0.2");
    b.sample.path = "/home/ada/.local/share/claude/versions/2.0.2";
    const auto tableRows = build({a, b}, Grouping::apps);
    EXPECT_THAT(ids(tableRows), ElementsAre("cmd:claude"));
}

TEST(Grouping, hasThreeLabels) {
    ASSERT_EQ(groupings.size(), 3U);
    EXPECT_EQ(groupings[0].rawValue, "apps");
    EXPECT_EQ(groupings[0].label, "By App");
    EXPECT_EQ(groupings[1].rawValue, "projects");
    EXPECT_EQ(groupings[1].label, "By Project");
    EXPECT_EQ(groupings[2].rawValue, "all");
    EXPECT_EQ(groupings[2].label, "All Processes");
}

}  // namespace
}  // namespace tolvane
