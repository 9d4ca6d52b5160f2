#include "platform/macos/kernel/SpawnedChildProcesses.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "platform/macos/kernel/Spawn.h"

namespace tolvane::machost {

namespace {

/// Owns one end of a pipe, which no other child inherits.
class PipeEnd {
public:
    explicit PipeEnd(int descriptor) : descriptor_(descriptor) { ::fcntl(descriptor_, F_SETFD, FD_CLOEXEC); }
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;
    ~PipeEnd() { close(); }

    int get() const { return descriptor_; }
    void close() {
        if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
    }

private:
    int descriptor_;
};

std::string readToEnd(int descriptor) {
    std::string text;
    std::array<char, 16384> part{};
    while (true) {
        const auto length = ::read(descriptor, part.data(), part.size());
        if (length > 0) text.append(part.data(), static_cast<std::size_t>(length));
        if (length == 0 || (length < 0 && errno != EINTR)) return text;
    }
}

bool endsWell(Pid pid) {
    int status = 0;
    pid_t ended = 0;
    do {
        ended = ::waitpid(pid, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return ended == pid && WIFEXITED(status) && WEXITSTATUS(status) == 0;
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

std::optional<std::string> SpawnedChildProcesses::run(const std::string& path,
                                                      const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return std::nullopt;
    const PipeEnd output(ends[0]);
    PipeEnd input(ends[1]);
    Pid pid = 0;
    if (kernel_->spawn(requestOf(path, arguments, input.get(), spawnFlags_), &pid) != 0) return std::nullopt;
    input.close();
    auto text = readToEnd(output.get());
    if (!endsWell(pid)) return std::nullopt;
    return text;
}

}  // namespace tolvane::machost
