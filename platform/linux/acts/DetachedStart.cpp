#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "base/files/FileDescriptor.h"
#include "platform/linux/acts/LinuxProcessControl.h"
#include "platform/linux/acts/SpawnPlan.h"

namespace tolvane::linuxhost {

namespace {

constexpr mode_t logMode = 0644;

/// Starts it from a child that exits at once, so that the first process (or the service manager) adopts the program and
/// reaps it. As our own child it would stay a zombie after it ends.
std::optional<Pid> spawnOrphan(const SpawnPlan& plan, const char* path, char* const* arguments,
                               char* const* environment) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
    const FileDescriptor out(ends[0]);
    FileDescriptor in(ends[1]);
    const pid_t starter = ::fork();
    if (starter == 0) {
        // The fork copied no other threads, but perhaps their locks: do not allocate here.
        const pid_t started = plan.spawn(path, arguments, environment);
        ::_exit(::write(in.get(), &started, sizeof started) == sizeof started ? 0 : 1);
    }
    in.reset();
    if (starter < 0) return std::nullopt;
    pid_t started = -1;
    ssize_t count = 0;
    do count = ::read(out.get(), &started, sizeof started);
    while (count < 0 && errno == EINTR);
    while (::waitpid(starter, nullptr, 0) < 0 && errno == EINTR) {
    }
    return count == sizeof started && started > 0 ? std::optional<Pid>(started) : std::nullopt;
}

}  // namespace

std::optional<Pid> LinuxProcessControl::start(const DetachedStart& program) {
    SpawnPlan plan;
    plan.open(STDIN_FILENO, "/dev/null", O_RDONLY);
    plan.open(STDOUT_FILENO, program.log.c_str(), O_WRONLY | O_CREAT | O_APPEND, logMode);
    plan.duplicate(STDOUT_FILENO, STDERR_FILENO);
    plan.changeFolder(program.workingDirectory.c_str());
    plan.newSession();
    const auto arguments = program.args.empty() ? std::vector{program.executable} : program.args;
    const auto argumentVector = execVector(arguments);
    const auto environment = execVector(program.environment);
    return spawnOrphan(plan, program.executable.c_str(), argumentVector.data(), environment.data());
}

}  // namespace tolvane::linuxhost
