#include "platform/linux/session/QuitSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <memory>
#include <utility>

#include "base/files/FileDescriptor.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::array quitSignals = {SIGTERM, SIGINT, SIGHUP};

/// The only state that a signal handler can reach; -1 while there is no listener.
std::atomic<int> pipeToLoop = -1;

/// Restores the default first, so that a second signal ends the program.
void tellLoop(int number) {
    const int saved = errno;
    std::signal(number, SIG_DFL);
    const auto byte = static_cast<char>(number);
    if (const int pipe = pipeToLoop; pipe >= 0) (void)!write(pipe, &byte, 1);
    errno = saved;
}

class Listener {
public:
    explicit Listener(std::function<void()> asked) : asked_(std::move(asked)) {
        std::array<int, 2> ends = {-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
        in_.reset(ends[0]);
        out_.reset(ends[1]);
        pipeToLoop = ends[1];
        notifier_ = std::make_unique<QSocketNotifier>(in_.get(), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
        for (std::size_t index = 0; index < quitSignals.size(); ++index) listen(index);
    }
    ~Listener() {
        for (std::size_t index = 0; index < quitSignals.size(); ++index) {
            sigaction(quitSignals[index], &before_[index], nullptr);
        }
        pipeToLoop = -1;
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

private:
    void listen(std::size_t index) {
        struct sigaction ours = {};
        ours.sa_handler = tellLoop;
        ours.sa_flags = SA_RESTART;
        sigaction(quitSignals[index], &ours, &before_[index]);
        const bool wasIgnored = before_[index].sa_handler == SIG_IGN;
        if (wasIgnored) sigaction(quitSignals[index], &before_[index], nullptr);
    }
    void read() {
        std::array<char, 16> bytes{};
        if (::read(in_.get(), bytes.data(), bytes.size()) > 0) asked_();
    }

    std::function<void()> asked_;
    FileDescriptor in_;
    FileDescriptor out_;
    std::array<struct sigaction, quitSignals.size()> before_ = {};
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace

Subscription onQuitSignal(std::function<void()> asked) {
    return Subscription([listener = std::make_shared<Listener>(std::move(asked))]() mutable { listener.reset(); });
}

}  // namespace tolvane::linuxhost
