#include "platform/linux/acts/ThreadPriority.h"

#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace tolvane::linuxhost {

namespace {

// libc has no calls for disk priorities; these are the kernel's numbers.
constexpr int whoIsOneThread = 1;
constexpr int classShift = 13;
constexpr int realTimeClass = 1;
constexpr int idleClass = 3;
constexpr int idleDisk = idleClass << classShift;

constexpr int inheritanceFlag = SCHED_RESET_ON_FORK;

int plain(int policy) { return policy & ~inheritanceFlag; }

bool setPolicy(Pid thread, int policy) {
    const sched_param none{};
    return ::sched_setscheduler(thread, policy, &none) == 0;
}

bool setDisk(Pid thread, int disk) { return ::syscall(SYS_ioprio_set, whoIsOneThread, thread, disk) == 0; }

/// The lowest limit that lets a process return to this niceness.
rlim_t limitToReturnTo(int niceness) { return static_cast<rlim_t>(20 - niceness); }

}  // namespace

std::optional<ThreadPriority> priorityOf(Pid thread) {
    const int policy = ::sched_getscheduler(thread);
    const auto disk = ::syscall(SYS_ioprio_get, whoIsOneThread, thread);
    if (policy < 0 || disk < 0) return std::nullopt;
    // For "none of its own" some kernels report a level too; only the class counts.
    const int own = static_cast<int>(disk);
    return ThreadPriority{.policy = policy, .disk = own >> classShift == 0 ? 0 : own};
}

ThreadPriority lowered(const ThreadPriority& priority, Background background) {
    ThreadPriority low = priority;
    const int wanted = background == Background::idle ? SCHED_IDLE : SCHED_BATCH;
    const bool isHigher =
        plain(priority.policy) == SCHED_OTHER || (plain(priority.policy) == SCHED_BATCH && wanted == SCHED_IDLE);
    if (isHigher) low.policy = wanted | (priority.policy & inheritanceFlag);
    if (priority.disk >> classShift != realTimeClass) low.disk = idleDisk;
    return low;
}

bool setPriority(Pid thread, const ThreadPriority& now, const ThreadPriority& wanted) {
    const bool policyStands = now.policy == wanted.policy || setPolicy(thread, wanted.policy);
    const bool diskStands = now.disk == wanted.disk || setDisk(thread, wanted.disk);
    return policyStands && diskStands;
}

bool limitAllowsToRaise(Pid process) {
    rlimit limit{};
    if (::prlimit(process, RLIMIT_NICE, nullptr, &limit) != 0) return false;
    errno = 0;
    const int niceness = ::getpriority(PRIO_PROCESS, static_cast<id_t>(process));
    return errno == 0 && limit.rlim_cur >= limitToReturnTo(niceness);
}

bool holdsRightToRaise() {
    // If our own limit allows it, a trial says nothing about other processes.
    if (limitAllowsToRaise(::getpid())) return false;
    bool cameBack = false;
    std::thread([&] { cameBack = setPolicy(0, SCHED_IDLE) && setPolicy(0, SCHED_OTHER); }).join();
    return cameBack;
}

}  // namespace tolvane::linuxhost
