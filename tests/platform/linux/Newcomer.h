#pragma once

#include <linux/sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// A child of this test with a pid that the test chooses, which no process has at that time, and that any signal ends.
/// Needs root and kernel 5.5; `isThere` says whether it worked.
class Newcomer {
public:
    explicit Newcomer(Pid number) {
        pid_t wanted = number;
        clone_args arguments{};
        arguments.set_tid = reinterpret_cast<std::uintptr_t>(&wanted);
        arguments.set_tid_size = 1;
        arguments.exit_signal = SIGCHLD;
        pid_ = static_cast<Pid>(::syscall(SYS_clone3, &arguments, sizeof arguments));
        if (pid_ == 0) wait();
    }
    Newcomer(const Newcomer&) = delete;
    Newcomer& operator=(const Newcomer&) = delete;
    ~Newcomer() {
        if (!isThere()) return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }

    bool isThere() const { return pid_ > 0; }
    Pid pid() const { return pid_; }
    /// False from the first signal on. Does not reap the child.
    bool lives() const {
        siginfo_t ended{};
        return ::waitid(P_PID, static_cast<id_t>(pid_), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid == 0;
    }

private:
    /// Made without the C library's knowledge: it may only make system calls.
    [[noreturn]] static void wait() {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;) ::pause();
    }

    Pid pid_ = -1;
};

}  // namespace tolvane::linuxhost
