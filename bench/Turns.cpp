#include "bench/Turns.h"

#include <glib.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <utility>

namespace tolvane::bench {

namespace {

constexpr double least = 0.1;

double milliseconds(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

Turn now() { return {.wall = milliseconds(CLOCK_MONOTONIC), .cpu = milliseconds(CLOCK_THREAD_CPUTIME_ID)}; }

/// What the loop's poll function, which takes no argument of ours, leaves behind.
struct Watch {
    Turn began;
    std::vector<Turn> turns;
} watch;

gint waitAndNote(GPollFD* files, guint count, gint timeout) {
    const auto end = now();
    const Turn turn{.wall = end.wall - watch.began.wall, .cpu = end.cpu - watch.began.cpu};
    if (turn.wall > least || turn.cpu > least) watch.turns.push_back(turn);
    const auto ready = g_poll(files, count, timeout);
    watch.began = now();
    return ready;
}

}  // namespace

Turns::Turns() {
    watch = {.began = now(), .turns = {}};
    g_main_context_set_poll_func(nullptr, &waitAndNote);
}

Turns::~Turns() { g_main_context_set_poll_func(nullptr, nullptr); }

std::vector<Turn> Turns::take() { return std::exchange(watch.turns, {}); }

std::vector<ThreadTime> threadTimes() {
    std::vector<ThreadTime> found;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        ThreadTime time{.isMain = thread.path().filename() == std::to_string(::getpid())};
        std::getline(std::ifstream(thread.path() / "comm"), time.name);
        // Nanoseconds on the processor come first.
        std::ifstream(thread.path() / "schedstat") >> time.milliseconds;
        time.milliseconds /= 1e6;
        found.push_back(std::move(time));
    }
    return found;
}

}  // namespace tolvane::bench
