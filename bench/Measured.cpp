#include "bench/Measured.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>

namespace tolvane::bench {

namespace {

double processMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

}  // namespace

double cpuMillisecondsOf(const std::function<void()>& work) {
    const double before = processMilliseconds();
    work();
    return processMilliseconds() - before;
}

Seconds threadTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return Seconds{static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9};
}

double medianOf(std::vector<double> values) {
    if (values.empty()) return 0;
    std::ranges::sort(values);
    return values[values.size() / 2];
}

RunningPopulation::RunningPopulation(const std::vector<std::string>& arguments) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "population";
    int ready[2];
    if (::pipe2(ready, O_CLOEXEC) != 0) return;
    std::vector<std::string> words{"population"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (auto& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_ = ::fork();
    if (pid_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::dup2(ready[1], STDOUT_FILENO);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    ::close(ready[1]);
    // It reports how many there are, then closes its output.
    char text[64];
    while (::read(ready[0], text, sizeof text) > 0) {
    }
    ::close(ready[0]);
}

RunningPopulation::~RunningPopulation() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGTERM);
    ::waitpid(pid_, nullptr, 0);
}

}  // namespace tolvane::bench
