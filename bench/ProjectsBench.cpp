#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "app/tools/Tools.h"
#include "core/projects/GitBranch.h"
#include "core/projects/Projects.h"
#include "core/sampling/ProcessReader.h"
#include "platform/linux/acts/LinuxChildProcesses.h"
#include "platform/linux/processes/LinuxProcessInspection.h"
#include "platform/linux/processes/LinuxServiceManager.h"

// What the projects screen costs: grouping on the main thread at each look, and in the background every 15 seconds the
// branches (one git per repository is nearly all of it), the ports, and which services are kept.

namespace tolvane {
namespace {

World worldOf(std::int64_t count) {
    World world;
    world.uid = 1000;
    for (Pid pid = 2; pid < count + 2; ++pid) {
        ProcRow row;
        row.sample.pid = pid;
        row.sample.ppid = pid < 20 ? 1 : pid / 3;
        row.sample.uid = 1000;
        row.sample.name = pid % 9 == 0 ? "zsh" : "node";
        row.sample.path = "/home/ada/.local/bin/node";
        row.sample.args = TextList{"node", "/home/ada/src/server.js", "--port=3000"};
        row.sample.footprint = static_cast<std::uint64_t>(pid) << 20U;
        if (pid % 2 == 0) row.project = Text("/home/ada/src/project" + std::to_string(pid % 40));
        world.rows.push_back(std::move(row));
    }
    return world;
}

void groups(benchmark::State& state) {
    const auto world = worldOf(state.range(0));
    const std::set<Pid> kept = {30, 31, 32};
    for (auto _ : state) benchmark::DoNotOptimize(Projects::groups(world, kept));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(groups)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

/// Repositories with a commit each, made by git.
class Repositories {
public:
    explicit Repositories(int count) {
        std::string pattern = (std::filesystem::temp_directory_path() / "repositories.XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        for (int number = 0; number < count; ++number) {
            roots.push_back(folder_ + "/" + std::to_string(number));
            std::filesystem::create_directory(roots.back());
            const auto command = "cd " + roots.back() +
                                 " && git -c init.defaultBranch=main init -q && git -c user.name=Ada -c "
                                 "user.email=ada@example.org commit -q --allow-empty -m first";
            // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe)
            if (std::system(command.c_str()) != 0) roots.pop_back();
        }
    }
    Repositories(const Repositories&) = delete;
    Repositories& operator=(const Repositories&) = delete;
    ~Repositories() { std::filesystem::remove_all(folder_); }

    std::vector<std::string> roots;

private:
    std::string folder_;
};

void branchesOfTwentyRepositories(benchmark::State& state) {
    const Repositories repositories(20);
    linuxhost::LinuxChildProcesses children;
    for (auto _ : state) {
        for (const auto& root : repositories.roots) {
            const auto branch = GitBranch::read(root);
            if (branch.branch) benchmark::DoNotOptimize(Tools::remoteGone(children, root, *branch.branch));
        }
    }
}
BENCHMARK(branchesOfTwentyRepositories)->Unit(benchmark::kMillisecond)->UseRealTime();

void branchFilesOfTwentyRepositories(benchmark::State& state) {
    const Repositories repositories(20);
    for (auto _ : state) {
        for (const auto& root : repositories.roots) benchmark::DoNotOptimize(GitBranch::read(root));
    }
}
BENCHMARK(branchFilesOfTwentyRepositories)->Unit(benchmark::kMicrosecond);

/// Processes that listen on a port each.
class Listeners {
public:
    explicit Listeners(int count) {
        for (int number = 0; number < count; ++number) {
            const pid_t pid = ::fork();
            if (pid == 0) listenAndWait();
            pids.push_back(pid);
        }
        ::usleep(200'000);
    }
    Listeners(const Listeners&) = delete;
    Listeners& operator=(const Listeners&) = delete;
    ~Listeners() {
        for (const Pid pid : pids) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, nullptr, 0);
        }
    }

    std::vector<Pid> pids;

private:
    [[noreturn]] static void listenAndWait() {
        const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        ::listen(listener, 1);
        for (;;) ::pause();
    }
};

void portsOfTwoHundredTogether(benchmark::State& state) {
    const Listeners listeners(200);
    linuxhost::LinuxProcessInspection inspection({});
    for (auto _ : state) benchmark::DoNotOptimize(ProcessReader::listeningPorts(inspection, listeners.pids));
}
BENCHMARK(portsOfTwoHundredTogether)->Unit(benchmark::kMillisecond);

/// The peer: the tables are read once per process.
void portsOfTwoHundredOneByOne(benchmark::State& state) {
    const Listeners listeners(200);
    linuxhost::LinuxProcessInspection inspection({});
    for (auto _ : state) {
        for (const Pid pid : listeners.pids) benchmark::DoNotOptimize(ProcessReader::listeningPorts(inspection, pid));
    }
}
BENCHMARK(portsOfTwoHundredOneByOne)->Unit(benchmark::kMillisecond);

void keptServices(benchmark::State& state) {
    linuxhost::LinuxServiceManager services;
    for (auto _ : state) benchmark::DoNotOptimize(services.managedPIDs());
}
BENCHMARK(keptServices)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tolvane
