#include "platform/linux/acts/LinuxChildProcesses.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

#include "base/files/Files.h"
#include "platform/linux/acts/SpawnPlan.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::size_t pipeSize = 65536;

struct Pipe {
    FileDescriptor out;
    FileDescriptor in;
};

std::optional<Pipe> makePipe() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
    return Pipe{.out = FileDescriptor(ends[0]), .in = FileDescriptor(ends[1])};
}

pid_t start(const std::string& path, const std::vector<std::string>& arguments, const FileDescriptor& output) {
    SpawnPlan plan;
    plan.duplicate(output.get(), STDOUT_FILENO);
    plan.open(STDERR_FILENO, "/dev/null", O_WRONLY);
    std::vector<std::string> all = {path};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const auto argumentVector = execVector(all);
    return plan.spawn(path.c_str(), argumentVector.data(), environ);
}

/// Kills the child, whose caller no longer waits. One that the kernel cannot end yet is left to it.
void abandon(pid_t pid) {
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, WNOHANG);
}

}  // namespace

LinuxChildProcesses::LinuxChildProcesses(std::string searchPath)
    : searchPath_(std::move(searchPath)), ended_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

LinuxChildProcesses::~LinuxChildProcesses() {
    end();
    std::unique_lock lock(mutex_);
    left_.wait(lock, [this] { return callers_ == 0; });
}

void LinuxChildProcesses::end() {
    const std::lock_guard lock(mutex_);
    ending_ = true;
    const std::uint64_t one = 1;
    // The counter cannot overflow: it is written once or twice and never read.
    static_cast<void>(::write(ended_.get(), &one, sizeof one) == sizeof one);
}

bool LinuxChildProcesses::enter() {
    const std::lock_guard lock(mutex_);
    if (ending_) return false;
    ++callers_;
    return true;
}

void LinuxChildProcesses::leave() {
    const std::lock_guard lock(mutex_);
    --callers_;
    // Notify under the lock: once it is released, this object may be gone.
    left_.notify_all();
}

std::optional<std::string> LinuxChildProcesses::run(const std::string& path,
                                                    const std::vector<std::string>& arguments) {
    if (!enter()) return std::nullopt;
    auto printed = runEntered(path, arguments);
    leave();
    return printed;
}

std::optional<std::string> LinuxChildProcesses::runEntered(const std::string& path,
                                                           const std::vector<std::string>& arguments) const {
    auto pipe = makePipe();
    if (!pipe) return std::nullopt;
    const pid_t pid = start(path, arguments, pipe->in);
    if (pid < 0) return std::nullopt;
    // While our write end is open, the pipe never ends.
    pipe->in.reset();
    auto printed = readAll(pipe->out);
    if (!printed) {
        abandon(pid);
        return std::nullopt;
    }
    return exitStatus(pid) == 0 ? std::move(printed) : std::nullopt;
}

LinuxChildProcesses::Heard LinuxChildProcesses::listen(int descriptor) const {
    std::array<pollfd, 2> waited{pollfd{.fd = descriptor, .events = POLLIN, .revents = 0},
                                 pollfd{.fd = ended_.get(), .events = POLLIN, .revents = 0}};
    while (::poll(waited.data(), waited.size(), -1) < 0 && errno == EINTR) {
    }
    return waited[1].revents != 0 ? Heard::ended : Heard::ready;
}

std::optional<std::string> LinuxChildProcesses::readAll(const FileDescriptor& pipe) const {
    std::string bytes;
    std::vector<char> buffer(pipeSize);
    for (;;) {
        if (listen(pipe.get()) == Heard::ended) return std::nullopt;
        const ssize_t count = ::read(pipe.get(), buffer.data(), buffer.size());
        if (count == 0) return bytes;
        if (count < 0 && errno != EINTR) return bytes;
        if (count > 0) bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

/// A child may close its output and go on running. Kernels before 5.3 have no descriptor to poll for its exit; there we
/// wait for it.
std::optional<int> LinuxChildProcesses::exitStatus(pid_t pid) const {
    const FileDescriptor process(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (process && listen(process.get()) == Heard::ended) {
        abandon(pid);
        return std::nullopt;
    }
    int status = 0;
    pid_t ended = 0;
    do ended = ::waitpid(pid, &status, 0);
    while (ended < 0 && errno == EINTR);
    return ended == pid && WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

std::optional<std::string> LinuxChildProcesses::find(std::string_view tool) {
    for (auto& place : toolPlaces(tool, searchPath_)) {
        if (isExecutable(place)) return std::move(place);
    }
    return std::nullopt;
}

std::vector<std::string> toolPlaces(std::string_view tool, std::string_view searchPath) {
    std::vector<std::string> places;
    const auto add = [&](std::string_view folder) {
        auto place = std::string(folder) + "/" + std::string(tool);
        if (std::ranges::find(places, place) == places.end()) places.push_back(std::move(place));
    };
    while (!searchPath.empty()) {
        const auto folder = Scan::take(searchPath, ':');
        if (folder.starts_with('/')) add(folder);
    }
    for (const std::string_view folder : {"/usr/local/bin", "/usr/bin"}) add(folder);
    return places;
}

bool isExecutable(const std::string& path) { return ::access(path.c_str(), X_OK) == 0 && !Files::isFolder(path); }

}  // namespace tolvane::linuxhost
