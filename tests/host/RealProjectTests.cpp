#include <gmock/gmock.h>
#include <unistd.h>

#include <QCoroTask>
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "app/tools/Tools.h"
#include "core/projects/GitBranch.h"
#include "tests/host/RealMachine.h"
#include "tests/platform/linux/EventLoop.h"

namespace tolvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

constexpr const char* node = "/usr/bin/node";

const char* const server = R"(
const { fork } = require('child_process');
if (process.argv[2] === 'worker') setInterval(() => {}, 1000);
else {
    fork(__filename, ['worker']);
    require('net').createServer().listen(+process.env.PORT, '127.0.0.1', () => console.log('listening ' + process.env.PORT));
}
)";

class RealProject : public RealMachine {
protected:
    RealProject() {
        if (!std::filesystem::exists(node)) needsNode_ = true;
    }
    void SetUp() override {
        if (needsNode_) GTEST_SKIP() << "Node.js is not installed";
    }

    /// A project whose development server is a script of its package.
    std::string devProject(const std::string& name) {
        const auto root = repository(name);
        files.write(name + "/server.js", server);
        files.write(name + "/package.json", R"({"name": "shop", "scripts": {"dev": "node server.js"}})");
        return root;
    }
    std::vector<std::string> environment(int port) const {
        return {"PATH=/usr/bin:/bin", "HOME=" + home, "PORT=" + std::to_string(port), "SECRET=keep me",
                "npm_config_update_notifier=false"};
    }

private:
    bool needsNode_ = false;
};

TEST_F(RealProject, aDevelopmentServerIsParkedAndStartedAgainAsItWas) {
    if (!std::filesystem::exists("/usr/bin/npm")) GTEST_SKIP() << "npm is not installed";
    const auto root = devProject("shop");
    const int port = freePort();
    run(root, {"/bin/sh", "-c", "npm run dev; true"}, environment(port));
    start();
    ASSERT_TRUE(listensOn(root, "server.js", port)) << files.read("first.log");
    ASSERT_TRUE(eventually([&] { return find(root, "worker"); }));
    const auto before = *find(root, "server.js");
    const auto environmentBefore = environmentOf(before.id());
    const auto running = group(root);
    EXPECT_GE(running.rows.size(), 3U) << "npm, the server and its worker";

    QCoro::waitFor(model->acts().park(running));
    ASSERT_EQ(model->parked->size(), 1U);
    const auto parked = model->parked->front();
    ASSERT_EQ(parked.commands.size(), 1U);
    EXPECT_THAT(parked.commands[0].args, IsSupersetOf({"run", "dev"}));
    EXPECT_THAT(parked.commands[0].env, Contains("SECRET=keep me"));
    EXPECT_EQ(parked.commands[0].cwd, root);
    EXPECT_TRUE(eventually([&] { return processesIn(root).empty(); }));

    QCoro::waitFor(model->startAgain(parked));
    EXPECT_THAT(notifications(), IsEmpty());
    EXPECT_THAT(*model->parked, IsEmpty());
    ASSERT_TRUE(listensOn(root, "server.js", port)) << log("shop");
    ASSERT_TRUE(eventually([&] { return find(root, "worker"); }));
    const auto said = "listening " + std::to_string(port);
    EXPECT_TRUE(eventually([&] { return log("shop").find(said) != std::string::npos; })) << log("shop");
    const auto* after = find(root, "server.js");
    ASSERT_TRUE(after);
    EXPECT_NE(after->id(), before.id());
    EXPECT_EQ(after->sample.args, before.sample.args);
    EXPECT_EQ(after->sample.path, before.sample.path);
    EXPECT_EQ(environmentOf(after->id()), environmentBefore);
    EXPECT_EQ(group(root).rows.size(), running.rows.size());
    for (const auto& row : group(root).rows) EXPECT_NE(row.sample.ppid, ::getpid());

    const Pid again = after->id();
    model.reset();
    EXPECT_THAT(processesIn(root), Contains(again)) << "it outlives us";
}

TEST_F(RealProject, whatIgnoresTheSignalIsKilled) {
    const auto root = repository("stubborn");
    files.write("stubborn/stubborn.js",
                "process.on('SIGTERM', () => console.log('no')); setInterval(() => {}, 1000); console.log('up');");
    run(root, {node, "stubborn.js"}, environment(0));
    ASSERT_TRUE([&] {
        start();
        return eventually([&] { return files.read("first.log").starts_with("up"); });
    }());
    tick();
    ASSERT_EQ(group(root).rows.size(), 1U);
    QCoro::waitFor(model->acts().stop(group(root)));
    EXPECT_THAT(files.read("first.log"), HasSubstr("no"));
    EXPECT_THAT(processesIn(root), IsEmpty());
    EXPECT_THAT(*model->parked, IsEmpty());
}

TEST_F(RealProject, whatHasGoneMeanwhileIsTold) {
    const auto root = repository("shop");
    const auto tool = executable("shop/tool", "#!/bin/sh\necho here $PWD $WORD\n");
    const auto gone = executable("shop/gone", "#!/bin/sh\n");
    const ParkedCommand works{.executable = tool, .args = {"tool"}, .env = {"WORD=once"}, .cwd = root};
    const ParkedCommand programGone{.executable = gone, .args = {"gone", "--now"}, .env = {}, .cwd = root};
    const ParkedCommand folderGone{.executable = tool, .args = {"elsewhere"}, .env = {}, .cwd = root + "/gone.d"};
    std::filesystem::remove(gone);
    start();
    const ParkedProject project{
        .root = root, .date = {}, .commands = {works, programGone, folderGone, works}, .containers = {}};
    modelState->parked.set({project});
    QCoro::waitFor(model->startAgain(project));
    ASSERT_EQ(notifications().size(), 1U);
    EXPECT_EQ(notifications()[0].title, "Could not start all of shop");
    EXPECT_EQ(notifications()[0].body,
              "gone and elsewhere did not start. Output goes to " + home + "/Library/Logs/Tolvane/shop.log.");
    EXPECT_THAT(*model->parked, IsEmpty());
    const auto line = "here " + root + " once\n";
    EXPECT_TRUE(eventually([&] { return log("shop") == line + line; })) << log("shop");
}

TEST_F(RealProject, projectsOfOneFolderNameShareTheirLog) {
    const auto first = repository("a/shop");
    const auto second = repository("b/shop");
    const auto tool = executable("tool", "#!/bin/sh\necho $PWD\n");
    start();
    for (const auto& root : {first, second}) {
        QCoro::waitFor(model->startAgain({.root = root,
                                          .date = {},
                                          .commands = {{.executable = tool, .args = {}, .env = {}, .cwd = root}},
                                          .containers = {}}));
        EXPECT_TRUE(eventually([&] { return log("shop").ends_with(root + "\n"); }));
    }
    EXPECT_EQ(log("shop"), first + "\n" + second + "\n");
    EXPECT_THAT(notifications(), IsEmpty());
}

class RealRepository : public RealMachine {
protected:
    /// Whether the branch checked out in the folder counts as gone on its remote.
    bool remoteGone(const std::string& root) {
        linuxhost::LinuxChildProcesses children;
        const auto state = GitBranch::read(root);
        return state.branch && !state.deleted && Tools::remoteGone(children, root, *state.branch);
    }
    void git(const std::string& root, const std::string& arguments) const {
        shell("git -c user.name=Ada -c user.email=ada@example.org -C '" + root + "' " + arguments);
    }
    /// A clone that follows a branch of its remote.
    std::string follow(const std::string& branch) {
        const auto remote = repository("remote");
        git(remote, "branch '" + branch + "'");
        shell("git clone -q '" + remote + "' '" + home + "/clone' 2>/dev/null");
        git(home + "/clone", "checkout -q '" + branch + "'");
        return home + "/clone";
    }
};

TEST_F(RealRepository, anUpstreamIsGoneOnceTheRemoteHasItNoMore) {
    const auto clone = follow("feature/x");
    EXPECT_FALSE(remoteGone(clone));
    git(home + "/remote", "branch -q -D feature/x");
    EXPECT_FALSE(remoteGone(clone)) << "nobody has fetched yet";
    git(clone, "fetch -q --prune");
    EXPECT_TRUE(remoteGone(clone));
    git(clone, "pack-refs --all");
    EXPECT_TRUE(remoteGone(clone)) << "packed or not";
}

TEST_F(RealRepository, aBranchThatFollowsNothingIsNotGone) {
    const auto root = repository("alone");
    EXPECT_FALSE(remoteGone(root));
    EXPECT_FALSE(remoteGone(home)) << "no repository at all";
}

TEST_F(RealRepository, lettersBeyondEnglishAreFollowed) {
    const auto clone = follow(
        "pr\xc3\xbc"
        "fung/\xe6\x97\xa5");
    git(home + "/remote",
        "branch -q -D 'pr\xc3\xbc"
        "fung/\xe6\x97\xa5'");
    git(clone, "fetch -q --prune");
    EXPECT_TRUE(remoteGone(clone));
}

TEST_F(RealRepository, aWorktreeTellsOfItsOwnBranch) {
    const auto clone = follow("feature/x");
    git(clone, "checkout -q main");
    git(clone, "worktree add -q '" + home + "/tree' feature/x");
    git(home + "/remote", "branch -q -D feature/x");
    git(clone, "fetch -q --prune");
    EXPECT_TRUE(remoteGone(home + "/tree"));
    EXPECT_FALSE(remoteGone(clone));
}

TEST_F(RealRepository, nestedRepositoriesAreProjectsOfTheirOwn) {
    const auto outer = repository("outer");
    const auto inner = repository("outer/vendor/inner");
    git(inner, "checkout -q -b inside");
    for (const auto& root : {outer, inner}) run(root, {"/usr/bin/sleep", "600"}, {});
    start();
    ASSERT_TRUE(eventually([&] { return group(outer).rows.size() == 1 && group(inner).rows.size() == 1; }));
    QCoro::waitFor(model->refreshProjects());
    EXPECT_EQ(model->branches->at(outer).state.branch, "main");
    EXPECT_EQ(model->branches->at(inner).state.branch, "inside");
}

class HangingTool : public RealMachine {};

TEST_F(HangingTool, holdsUpNeitherTheTickNorTheEnd) {
    const auto root = repository("shop");
    const auto client = executable("client", "#!/bin/sh\necho $$ > '" + home + "/client.pid'\nexec sleep 600\n");
    run(root, {"/usr/bin/sleep", "600"}, {});
    start(client);
    ASSERT_TRUE(eventually([&] { return group(root).rows.size() == 1; }));
    modelState->containers.set({{.id = "c1", .name = "db", .workingDir = root}});
    static_cast<void>(model->refreshProjects());
    ASSERT_TRUE(eventually([&] { return files.read("client.pid").ends_with('\n'); })) << "samples go on meanwhile";
    const Pid tool = std::stoi(files.read("client.pid"));
    const auto running = group(root);
    static_cast<void>(model->acts().stop(running));
    EXPECT_TRUE(eventually([&] { return group(root).rows.empty(); }));
    EXPECT_EQ(model->containers->size(), 1U);

    const auto before = std::chrono::steady_clock::now();
    model.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(3));
    const auto inspection = host.makeInspection();
    EXPECT_TRUE(linuxhost::runUntil([&] { return !inspection->bsdRecord(tool); })) << "it was killed";
}

TEST_F(HangingTool, aFailingClientTellsOfNothing) {
    const auto root = repository("shop");
    const auto client = executable("client", "#!/bin/sh\necho '{\"ID\":\"c1\"}'\nexit 1\n");
    run(root, {"/usr/bin/sleep", "600"}, {});
    start(client);
    ASSERT_TRUE(eventually([&] { return group(root).rows.size() == 1; }));
    QCoro::waitFor(model->refreshProjects());
    EXPECT_THAT(*model->containers, IsEmpty());
    EXPECT_EQ(model->branches->at(root).state.branch, "main");
    QCoro::waitFor(model->startAgain({.root = root, .date = {}, .commands = {}, .containers = {"c1"}}));
    ASSERT_EQ(notifications().size(), 1U);
    EXPECT_EQ(notifications()[0].body, "Docker did not start its containers.");
}

TEST_F(HangingTool, linesThatAreNoObjectsCostOnlyThemselves) {
    const auto client =
        executable("client", "#!/bin/sh\nprintf 'WARNING: old\\n\\n{\"ID\":\"c1\",\"Names\":\"\\377\"}\\n'\n");
    start(client);
    QCoro::waitFor(model->refreshProjects());
    EXPECT_THAT(*model->containers,
                ElementsAre(Container{.id = "c1", .name = "\xef\xbf\xbd", .workingDir = std::nullopt}));
}

}  // namespace
}  // namespace tolvane
