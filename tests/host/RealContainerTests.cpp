#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoroTask>
#include <QDeadlineTimer>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "core/projects/Docker.h"
#include "tests/host/RealMachine.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* engineProgram = "/usr/sbin/dockerd";
constexpr const char* clientProgram = "/usr/bin/docker";
constexpr const char* busybox = "/bin/busybox";

/// A container engine of the test's own, without networks, in a folder of its own.
class Engine {
public:
    explicit Engine(const fakes::TemporaryFolder& files) : files_(files) {
        std::filesystem::create_directories(files.path() / "engine");
        pid_ = ::fork();
        if (pid_ == 0) execute();
    }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine() {
        ::kill(pid_, SIGTERM);
        ::waitpid(pid_, nullptr, 0);
    }

    std::string address() const { return "unix://" + place("docker.sock"); }
    bool isUp() {
        const QDeadlineTimer limit(20'000);
        while (!limit.hasExpired()) {
            if (::waitpid(pid_, nullptr, WNOHANG) == pid_) return false;
            if (children_.run(clientProgram, {"-H", address(), "version"})) return true;
            ::usleep(100'000);
        }
        return false;
    }
    std::optional<std::string> run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"-H", address()});
        return children_.run(clientProgram, arguments);
    }

private:
    std::string place(const std::string& name) const { return files_ / ("engine/" + name); }
    [[noreturn]] void execute() const {
        const int log = ::open(place("log").c_str(), O_WRONLY | O_CREAT, 0600);
        ::dup2(log, 1);
        ::dup2(log, 2);
        ::execl(engineProgram, "dockerd", "-H", address().c_str(), "--data-root", place("data").c_str(), "--exec-root",
                place("exec").c_str(), "--pidfile", place("pid").c_str(), "--iptables=false", "--ip6tables=false",
                "--ip-forward=false", "--bridge=none", "--storage-driver=vfs", "--userland-proxy=false", nullptr);
        ::_exit(127);
    }

    const fakes::TemporaryFolder& files_;
    linuxhost::LinuxChildProcesses children_;
    pid_t pid_ = -1;
};

class RealContainers : public RealMachine {
protected:
    void SetUp() override {
        for (const char* program : {engineProgram, clientProgram, busybox}) {
            if (!std::filesystem::exists(program)) GTEST_SKIP() << program << " is not installed";
        }
        if (::getuid() != 0) GTEST_SKIP() << "only root can run a container engine";
        engine.emplace(files);
        if (!engine->isUp()) GTEST_SKIP() << "the container engine does not run here: " << files.read("engine/log");
        ::setenv("DOCKER_HOST", engine->address().c_str(), 1);
        makeImage();
    }
    void TearDown() override {
        ::unsetenv("DOCKER_HOST");
        model.reset();
        if (engine) engine->run({"kill", "web-1"});
        engine.reset();
    }

    void makeImage() {
        shell("mkdir -p '" + home + "/image/bin' && cp " + busybox + " '" + home + "/image/bin/' && ln -s busybox '" +
              home + "/image/bin/sleep' && tar -C '" + home + "/image' -c . | " + clientProgram + " -H " +
              engine->address() + " import - test/busybox:1 > /dev/null");
    }
    /// A container of the compose project in the folder; its id as the client lists it.
    std::string runContainer(const std::string& folder) {
        const auto id =
            engine->run({"run", "-d", "--init", "--network", "none", "--name", "web-1", "--label",
                         "com.docker.compose.project=shop", "--label",
                         "com.docker.compose.project.working_dir=" + folder, "test/busybox:1", "/bin/sleep", "600"});
        return id ? id->substr(0, 12) : "none";
    }

    std::optional<Engine> engine;
};

TEST_F(RealContainers, areFoundParkedAndStartedAgainWithTheirProject) {
    const auto root = repository("shop");
    const auto id = runContainer(root);
    if (id == "none") GTEST_SKIP() << "the container engine cannot run a container here";
    run(root, {"/usr/bin/sleep", "600"}, {});
    start(clientProgram);
    ASSERT_TRUE(eventually([&] { return group(root).rows.size() == 1; }));
    QCoro::waitFor(model->refreshProjects());
    EXPECT_THAT(*model->containers, ElementsAre(Container{.id = id, .name = "web-1", .workingDir = root}));

    QCoro::waitFor(model->acts().park(group(root)));
    EXPECT_THAT(*model->containers, IsEmpty());
    ASSERT_EQ(model->parked->size(), 1U);
    EXPECT_THAT(model->parked->front().containers, ElementsAre(id));
    EXPECT_EQ(engine->run({"ps", "-q"}), "");
    EXPECT_THAT(processesIn(root), IsEmpty());

    const auto parked = model->parked->front();
    QCoro::waitFor(model->startAgain(parked));
    EXPECT_THAT(notifications(), IsEmpty());
    EXPECT_EQ(engine->run({"ps", "-q"}), id + "\n");
    EXPECT_EQ(processesIn(root).size(), 1U);
    QCoro::waitFor(model->refreshProjects());
    EXPECT_EQ(model->containers->size(), 1U);
}

TEST_F(RealContainers, whatTheEngineDoesNotKnowIsTold) {
    const auto root = repository("shop");
    start(clientProgram);
    QCoro::waitFor(model->startAgain({.root = root, .date = {}, .commands = {}, .containers = {"feedfacecafe"}}));
    ASSERT_EQ(notifications().size(), 1U);
    EXPECT_EQ(notifications()[0].body, "Docker did not start its containers.");
}

}  // namespace
}  // namespace tolvane
