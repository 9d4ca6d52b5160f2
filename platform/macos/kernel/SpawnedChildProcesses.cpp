#include "platform/macos/kernel/SpawnedChildProcesses.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/macos/kernel/Spawn.h"

namespace tolvane::machost {

namespace {

constexpr std::size_t pipeRoom = 65536;
/// Between two looks at a child that has closed its output and goes on.
constexpr int lookMilliseconds = 20;

/// Waits for either; an answer with `ended` set means that the end has come.
struct Heard {
    bool something = false;
    bool ended = false;
};

Heard listen(int descriptor, int ended, int milliseconds) {
    std::array<pollfd, 2> waited{pollfd{.fd = descriptor, .events = POLLIN, .revents = 0},
                                 pollfd{.fd = ended, .events = POLLIN, .revents = 0}};
    if (::poll(waited.data(), waited.size(), milliseconds) < 0) return {};
    return {.something = waited[0].revents != 0, .ended = waited[1].revents != 0};
}

/// The child is not to outlive its caller's patience. One that the kernel cannot end yet is left to it.
void abandon(Pid pid) {
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, WNOHANG);
}

SpawnRequest requestOf(const std::string& path, const std::vector<std::string>& arguments, int output, short flags) {
    SpawnRequest request{
        .path = path,
        .arguments = {path},
        .environment = ownEnvironment(),
        .actions = {Duplicate{.source = 0, .descriptor = 0}, Duplicate{.source = output, .descriptor = 1},
                    OpenFile{.descriptor = 2, .path = "/dev/null", .flags = O_WRONLY}},
        .flags = flags};
    request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
    return request;
}

}  // namespace

SpawnedChildProcesses::SpawnedChildProcesses(Kernel kernel, short spawnFlags)
    : kernel_(std::move(kernel)), spawnFlags_(spawnFlags) {}

SpawnedChildProcesses::~SpawnedChildProcesses() {
    end();
    std::unique_lock lock(mutex_);
    left_.wait(lock, [this] { return callers_ == 0; });
}

void SpawnedChildProcesses::end() {
    const std::scoped_lock lock(mutex_);
    ending_ = true;
    ended_.closeInput();
}

bool SpawnedChildProcesses::enter() {
    const std::scoped_lock lock(mutex_);
    if (ending_ || !ended_) return false;
    ++callers_;
    return true;
}

void SpawnedChildProcesses::leave() {
    const std::scoped_lock lock(mutex_);
    --callers_;
    // Under the lock: once it is given back, this object may be gone.
    left_.notify_all();
}

std::optional<std::string> SpawnedChildProcesses::run(const std::string& path,
                                                      const std::vector<std::string>& arguments) {
    if (!enter()) return std::nullopt;
    auto printed = runEntered(path, arguments);
    leave();
    return printed;
}

std::optional<std::string> SpawnedChildProcesses::runEntered(const std::string& path,
                                                             const std::vector<std::string>& arguments) const {
    Pipe pipe;
    Pid pid = 0;
    if (!pipe || kernel_->spawn(requestOf(path, arguments, pipe.input(), spawnFlags_), &pid) != 0) return std::nullopt;
    // Ours would keep the pipe from ever coming to its end.
    pipe.closeInput();
    auto printed = readAll(pipe.output());
    if (!printed) {
        abandon(pid);
        return std::nullopt;
    }
    return endsWell(pid) ? std::move(printed) : std::nullopt;
}

std::optional<std::string> SpawnedChildProcesses::readAll(int descriptor) const {
    std::string bytes;
    std::vector<char> part(pipeRoom);
    while (true) {
        const auto heard = listen(descriptor, ended_.output(), -1);
        if (heard.ended) return std::nullopt;
        if (!heard.something) continue;
        const auto count = ::read(descriptor, part.data(), part.size());
        if (count == 0 || (count < 0 && errno != EINTR)) return bytes;
        if (count > 0) bytes.append(part.data(), static_cast<std::size_t>(count));
    }
}

/// With status 0. A child that has closed its output is mostly over; the system has no way to wait for that and for
/// the end alike that other systems know as well.
bool SpawnedChildProcesses::endsWell(Pid pid) const {
    int status = 0;
    while (true) {
        const auto over = ::waitpid(pid, &status, WNOHANG);
        if (over == pid) return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        if (over < 0 && errno != EINTR) return false;
        if (!listen(-1, ended_.output(), lookMilliseconds).ended) continue;
        abandon(pid);
        return false;
    }
}

bool SpawnedChildProcesses::isExecutable(const std::string& path) { return ::access(path.c_str(), X_OK) == 0; }

}  // namespace tolvane::machost
