#pragma once

#include <linux/sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// A child of this test that bears a number of the test's choice, which no process bears at that time, and that any
/// signal ends. Only root can have one, on kernels from 5.5 on; `isThere` tells.
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
    /// False from the first signal on. Does not take away the dead one.
    bool lives() const {
        siginfo_t ended{};
        return ::waitid(P_PID, static_cast<id_t>(pid_), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid == 0;
    }

private:
    /// Made without the C library's knowledge: it may do nothing but call the kernel.
    [[noreturn]] static void wait() {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;) ::pause();
    }

    Pid pid_ = -1;
};

}  // namespace tolvane::linuxhost
