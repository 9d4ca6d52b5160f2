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
/// The pause between two checks of a child that has closed its output but still runs.
constexpr int lookMilliseconds = 20;

/// Waits for either; in an answer with `ended` set this object is ending.
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

/// The child must not outlive its caller. If the kernel cannot end it yet, it is left to the kernel.
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

SpawnedChildProcesses::SpawnedChildProcesses(Kernel kernel, short spawnFlags, std::string home)
    : kernel_(std::move(kernel)), spawnFlags_(spawnFlags), home_(std::move(home)) {}

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
    // Under the lock: once the lock is released, this object may be gone.
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
    // Our copy would keep the pipe from ever reaching its end.
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

/// True for status 0. A child that has closed its output is nearly done; no portable call waits for the child and for
/// our own end at once.
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

std::optional<std::string> SpawnedChildProcesses::find(std::string_view tool) {
    return firstExecutable(toolPlaces(tool, home_));
}

std::vector<std::string> toolPlaces(std::string_view tool, const std::string& home) {
    if (tool == "docker") {
        return {"/usr/local/bin/docker", "/opt/homebrew/bin/docker", home + "/.orbstack/bin/docker",
                "/Applications/Docker.app/Contents/Resources/bin/docker"};
    }
    if (tool == "git") return {"/usr/bin/git"};
    return {};
}

bool isExecutable(const std::string& path) { return ::access(path.c_str(), X_OK) == 0; }

std::optional<std::string> firstExecutable(std::vector<std::string> places) {
    for (auto& place : places) {
        if (isExecutable(place)) return std::move(place);
    }
    return std::nullopt;
}

}  // namespace tolvane::machost
