#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// A child of this test that runs a function, which gets a line to talk over, and then waits to be killed.
class ChildProcess {
public:
    /// The child's side: `tell` sends a byte, `hear` waits for one.
    struct Line {
        int in = -1;
        int out = -1;

        void tell() const {
            const char byte = 1;
            if (::write(out, &byte, 1) != 1) ::_exit(9);
        }
        bool hear() const {
            char byte = 0;
            return ::read(in, &byte, 1) == 1;
        }
    };

    explicit ChildProcess(const std::function<void(const Line&)>& body) {
        int down[2];
        int up[2];
        if (::pipe(down) != 0 || ::pipe(up) != 0) return;
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(down[1]);
            ::close(up[0]);
            body({.in = down[0], .out = up[1]});
            ::_exit(0);
        }
        ::close(down[0]);
        ::close(up[1]);
        line_ = {.in = up[0], .out = down[1]};
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        ::close(line_.in);
        ::close(line_.out);
        if (pid_ > 0) end();
    }

    Pid pid() const { return pid_; }
    const Line& line() const { return line_; }

    /// Its exit status if it exits; 255 if a signal ends it.
    int wait() {
        int status = 0;
        ::waitpid(pid_, &status, 0);
        pid_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 255;
    }
    void end() {
        ::kill(pid_, SIGKILL);
        wait();
    }

private:
    Pid pid_ = 0;
    Line line_;
};

}  // namespace tolvane::linuxhost
