#pragma once

#include <QCoroTask>
#include <optional>
#include <string>
#include <vector>

#include "core/projects/Projects.h"
#include "tests/app/ModelTest.h"

namespace tolvane {

/// A home with two projects: a shop whose server has two children and a container, and a blog.
struct ProjectScene : ModelTest {
    const std::string home = folder / "home";
    const std::string shop = home + "/shop";
    const std::string blog = home + "/blog";
    static constexpr const char* client = "/usr/local/bin/docker";

    ProjectScene() {
        world.home = home;
        repository("shop", "main");
        repository("blog", "draft");
        add(11, 1, "npm", shop, {"npm", "run", "dev"}, {"PORT=3000", "SECRET=s3"});
        add(12, 11, "node", shop + "/web", {"node", "server.js"}, {"PORT=3000"});
        add(13, 12, "esbuild", shop, {"esbuild", "--service"}, {});
        add(21, 1, "hugo", blog, {"hugo", "serve"}, {"LANG=C"});
        world.find(11)->usage->footprint = 900 * MiB;
    }

    void repository(const std::string& name, const std::string& branch) const {
        folder.write("home/" + name + "/.git/HEAD", "ref: refs/heads/" + branch + "\n");
        folder.write("home/" + name + "/.git/refs/heads/" + branch, "0123\n");
    }
    fakes::FakeProcess& add(Pid pid, Pid parent, const std::string& name, const std::string& cwd,
                            const std::vector<std::string>& args, const std::vector<std::string>& env) {
        auto& process = world.add(pid, name);
        process.bsd->ppid = parent;
        process.cwd = Text(cwd);
        process.arguments = TextList(args);
        process.environment = env;
        return process;
    }
    /// Makes the engine list two running containers, one of them the shop's.
    void runEngine() {
        world.tools["docker"] = client;
        world.childOutput[std::string(client) + " ps --format {{json .}}"] =
            R"({"ID":"c1","Names":"db","Labels":"com.docker.compose.project.working_dir=)" + shop +
            "\"}\n{\"ID\":\"c2\",\"Names\":\"lone\"}\n";
    }
    void answer(const std::string& arguments) { world.childOutput[std::string(client) + " " + arguments] = "ok\n"; }
    /// How often the client was run with these arguments.
    std::size_t clientRuns(const std::string& arguments) const {
        return world.timesAsked("run " + std::string(client) + " " + arguments);
    }

    ProjectGroup group(const std::string& root) const {
        for (auto& each : Projects::groups(model->world(), *model->servicePIDs)) {
            if (each.root == root) return each;
        }
        return {.root = root};
    }
    const Container shopContainer{.id = "c1", .name = "db", .workingDir = shop};
};

}  // namespace tolvane
