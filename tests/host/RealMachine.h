#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/acts/Acts.h"
#include "app/model/AppModel.h"
#include "platform/linux/acts/LinuxChildProcesses.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {

/// Runs only one container client, so that a test controls what is found.
class OneClient : public linuxhost::LinuxChildProcesses {
public:
    explicit OneClient(std::string path) : path_(std::move(path)) {}
    std::optional<std::string> find(std::string_view tool) override {
        if (tool != "docker") return LinuxChildProcesses::find(tool);
        return path_.empty() ? std::nullopt : std::optional(path_);
    }

private:
    std::string path_;
};

/// The model on the real machine: real processes, repositories, sockets and tools, with a home of its own and no
/// notifications. Everything it starts ends with it.
class RealMachine : public ::testing::Test {
protected:
    RealMachine();
    ~RealMachine() override;

    /// `client` is the only container client; empty for none.
    void start(const std::string& client = {});
    /// Takes a sample now.
    void tick();
    /// Takes samples until the condition holds, for at most fifteen seconds.
    bool eventually(const std::function<bool()>& isSo);

    /// Makes a repository with one commit below home; returns its path.
    std::string repository(const std::string& name) const;
    /// Runs a command line to its end; fails the test if the command fails.
    void shell(const std::string& command) const;
    std::string executable(const std::string& name, const std::string& script) const;
    /// Starts a program in the folder as a terminal would.
    void run(const std::string& folder, const std::vector<std::string>& args, const std::vector<std::string>& env);
    /// A port that was free a moment ago.
    static int freePort();

    ProjectGroup group(const std::string& root) const;
    /// The process in the latest sample that works in the folder and has the argument.
    const ProcRow* find(const std::string& folder, const std::string& argument) const;
    /// Reads facts and takes samples until the process listens on the port.
    bool listensOn(const std::string& folder, const std::string& argument, int port);
    std::vector<std::string> environmentOf(Pid pid) const;
    /// All processes whose folder is the project's.
    std::vector<Pid> processesIn(const std::string& folder) const;

    const std::vector<Notification>& notifications() const { return fake.world->notifications; }
    std::string log(const std::string& project) const { return files.read("Library/Logs/Tolvane/" + project + ".log"); }

    fakes::TemporaryFolder files;
    const std::string home;
    fakes::FakeHost fake;
    Host host;
    ModelState* modelState = nullptr;
    std::unique_ptr<AppModel> model;
};

}  // namespace tolvane
