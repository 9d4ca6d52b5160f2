#include "tests/host/RealMachine.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QCoroTask>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "core/projects/Projects.h"
#include "core/sampling/ProcessReader.h"
#include "platform/linux/makeLinuxHost.h"
#include "tests/fakes/KeptState.h"

namespace tolvane {

namespace {

constexpr int patience = 15'000;

}  // namespace

RealMachine::RealMachine()
    : home(std::filesystem::canonical(files.path()).string()),
      host(linuxhost::makeLinuxHost(linuxhost::environmentOf({{"HOME", home}}), {})) {
    host.notifications = std::move(fake.host.notifications);
    host.pressure = std::move(fake.host.pressure);
    host.frontmost = std::move(fake.host.frontmost);
    host.applications = std::move(fake.host.applications);
}

RealMachine::~RealMachine() {
    model.reset();
    for (const Pid pid : processesIn(home)) ::kill(pid, SIGKILL);
}

void RealMachine::start(const std::string& client) {
    host.children = std::make_unique<OneClient>(client);
    model = std::make_unique<AppModel>(host, *fake.windows, false, AppModel::makeWorkerThread,
                                       fakes::keptState(modelState));
    tick();
}

void RealMachine::tick() {
    bool sampled = false;
    const auto notifier = model->snapshot.onChange([&] { sampled = true; });
    fake.world->press();
    const QDeadlineTimer limit(patience);
    while (!sampled && !limit.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    ASSERT_TRUE(sampled);
}

bool RealMachine::eventually(const std::function<bool()>& isSo) {
    const QDeadlineTimer limit(patience);
    while (!isSo() && !limit.hasExpired()) {
        tick();
        QDeadlineTimer pause(50);
        while (!pause.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return isSo();
}

std::string RealMachine::repository(const std::string& name) const {
    const auto root = home + "/" + name;
    std::filesystem::create_directories(root);
    shell("cd '" + root + "' && git -c init.defaultBranch=main init -q && git -c user.name=Ada " +
          "-c user.email=ada@example.org commit -q --allow-empty -m first");
    return root;
}

void RealMachine::shell(const std::string& command) const {
    // Nobody else runs here, and the test writes the command.
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe)
    EXPECT_EQ(std::system(("HOME='" + home + "'; export HOME; " + command).c_str()), 0) << command;
}

std::string RealMachine::executable(const std::string& name, const std::string& script) const {
    files.write(name, script);
    std::filesystem::permissions(home + "/" + name, std::filesystem::perms::owner_all);
    return home + "/" + name;
}

void RealMachine::run(const std::string& folder, const std::vector<std::string>& args,
                      const std::vector<std::string>& env) {
    ASSERT_TRUE(host.control->start({.executable = args.front(),
                                     .args = args,
                                     .environment = env,
                                     .workingDirectory = folder,
                                     .log = home + "/first.log"}));
}

int RealMachine::freePort() {
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ::bind(listener, reinterpret_cast<const sockaddr*>(&address), size);
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    ::close(listener);
    return ntohs(address.sin_port);
}

ProjectGroup RealMachine::group(const std::string& root) const {
    for (auto& each : Projects::groups(model->world(), *model->servicePIDs)) {
        if (each.root == root) return each;
    }
    return {.root = root};
}

const ProcRow* RealMachine::find(const std::string& folder, const std::string& argument) const {
    for (const auto& row : model->snapshot->rows) {
        if (!row.sample.cwd || row.sample.cwd->view() != folder) continue;
        for (const auto each : row.sample.args) {
            if (each == argument) return &row;
        }
    }
    return nullptr;
}

bool RealMachine::listensOn(const std::string& folder, const std::string& argument, int port) {
    return eventually([&] {
        QCoro::waitFor(model->refreshProjects());
        const auto* row = find(folder, argument);
        const auto found = row ? model->ports->find(row->id()) : model->ports->end();
        return found != model->ports->end() && found->second == std::vector{port};
    });
}

std::vector<std::string> RealMachine::environmentOf(Pid pid) const {
    const auto inspection = host.makeInspection();
    return ProcessReader::environment(*inspection, pid);
}

std::vector<Pid> RealMachine::processesIn(const std::string& folder) const {
    const auto inspection = host.makeInspection();
    ProcessReader reader(*inspection, false);
    std::vector<Pid> pids;
    for (const auto& sample : reader.readAll()) {
        if (sample.cwd && sample.cwd->view().starts_with(folder)) pids.push_back(sample.pid);
    }
    return pids;
}

}  // namespace tolvane
