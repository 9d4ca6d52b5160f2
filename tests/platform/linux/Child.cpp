#include "tests/platform/linux/Child.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <thread>

namespace tolvane::linuxhost::testing {

namespace {

void answer(int pipe) {
    const char done = 1;
    if (::write(pipe, &done, 1) != 1) ::_exit(1);
}

bool await(int pipe) {
    char byte = 0;
    return ::read(pipe, &byte, 1) == 1;
}

}  // namespace

Child::Child(Step first, Step then) {
    if (::pipe2(commands_, O_CLOEXEC) != 0 || ::pipe2(answers_, O_CLOEXEC) != 0) return;
    pid_ = ::fork();
    if (pid_ == 0) run(first, then);
    EXPECT_TRUE(await(answers_[0]));
}

Child::~Child() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    for (const int pipe : {commands_[0], commands_[1], answers_[0], answers_[1]}) {
        if (pipe >= 0) ::close(pipe);
    }
}

void Child::run(const Step& first, const Step& then) const {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (first) first();
    answer(answers_[1]);
    while (await(commands_[0])) {
        if (then) then();
        answer(answers_[1]);
    }
    ::_exit(0);
}

void Child::next() {
    nextAndGo();
    EXPECT_TRUE(await(answers_[0]));
}

void Child::nextAndGo() {
    const char go = 1;
    EXPECT_EQ(::write(commands_[1], &go, 1), 1);
}

bool eventually(const std::function<bool()>& isSo) {
    for (int count = 0; count < 500; ++count) {
        if (isSo()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

void touch(std::size_t megabytes) {
    const std::size_t size = megabytes << 20;
    void* memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory != MAP_FAILED) std::memset(memory, 1, size);
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tolvane::linuxhost::testing
