#include "platform/linux/acts/LinuxProcessControl.h"

#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <csignal>

#include <cerrno>
#include <filesystem>

#include "base/files/FileDescriptor.h"
#include "base/files/Files.h"
#include "platform/linux/machine/LinuxClockFacts.h"
#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::size_t procFileLimit = 1U << 20U;
/// Bounds the rounds for a program that keeps starting threads.
constexpr int maximumRounds = 16;
constexpr int maximumGenerations = 64;

std::uint64_t ticksSinceBoot() {
    return static_cast<std::uint64_t>(uptime().count() * static_cast<double>(::sysconf(_SC_CLK_TCK)));
}

/// A pidfd: the pid cannot be reused unnoticed between the check and the act. Kernels before 5.3 lack pidfds and some
/// sandboxes forbid them; there the check alone must do.
class Hold {
public:
    explicit Hold(Pid pid) : descriptor_(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0))), error_(errno) {}

    explicit operator bool() const { return descriptor_ || error_ == ENOSYS || error_ == EPERM; }
    bool send(Pid pid, int signal) const {
        if (!descriptor_) return ::kill(pid, signal) == 0;
        return ::syscall(SYS_pidfd_send_signal, descriptor_.get(), signal, nullptr, 0) == 0;
    }

private:
    FileDescriptor descriptor_;
    int error_;
};

/// The real user, from the line "Uid:	1000	1000	1000	1000".
std::optional<unsigned> userOf(std::string_view status) {
    while (!status.empty()) {
        auto line = Scan::take(status, '\n');
        if (Scan::word(line) == "Uid:") return wholeNumber<unsigned>(Scan::word(line));
    }
    return std::nullopt;
}

}  // namespace

LinuxProcessControl::LinuxProcessControl(DateOfTicks dateOfTicks, std::string proc)
    : dateOfTicks_(std::move(dateOfTicks)), proc_(std::move(proc)), holdsRight_(holdsRightToRaise()) {}

bool LinuxProcessControl::isAlive(const Incarnation& process) const {
    const auto found = readProcStat(proc_, process.pid);
    return found && !found->isGone() && dateOfTicks_(found->startTicks) == process.startTime;
}

bool LinuxProcessControl::isAncestor(Pid pid) const {
    Pid ancestor = ::getppid();
    for (int generation = 0; ancestor > 1 && generation < maximumGenerations; ++generation) {
        if (ancestor == pid) return true;
        const auto found = readProcStat(proc_, ancestor);
        ancestor = found ? found->ppid : 0;
    }
    return false;
}

bool LinuxProcessControl::isAllowed(Pid pid) const {
    if (pid < 2 || pid == ::getpid() || isAncestor(pid)) return false;
    const auto status = Files::readKernelFile(proc_ + "/" + std::to_string(pid) + "/status", procFileLimit);
    return status && userOf(*status) == ::getuid();
}

std::vector<Pid> LinuxProcessControl::threads(Pid pid) const {
    std::vector<Pid> found;
    std::error_code error;
    std::filesystem::directory_iterator entries(proc_ + "/" + std::to_string(pid) + "/task", error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        if (const auto thread = wholeNumber<Pid>(entries->path().filename().native())) found.push_back(*thread);
    }
    return found;
}

std::vector<Pid> LinuxProcessControl::children(Pid pid) const {
    std::vector<Pid> found;
    for (const Pid thread : threads(pid)) {
        const auto text = Files::readKernelFile(
            proc_ + "/" + std::to_string(pid) + "/task/" + std::to_string(thread) + "/children", procFileLimit);
        std::string_view rest = text ? std::string_view(*text) : std::string_view();
        for (auto word = Scan::word(rest); !word.empty(); word = Scan::word(rest)) {
            if (const auto child = wholeNumber<Pid>(word)) found.push_back(*child);
        }
    }
    return found;
}

/// Runs before any thread is lowered, so no noted thread has inherited yet.
void LinuxProcessControl::noteThreads(Pid pid, Loan& loan) const {
    for (const Pid thread : threads(pid)) {
        if (const auto now = priorityOf(thread)) loan.before.emplace(thread, *now);
    }
}

/// Repeats until every thread is low: a thread that starts meanwhile inherits from one that was not lowered yet.
void LinuxProcessControl::lowerThreads(Pid pid, Loan& loan) const {
    bool foundNew = true;
    for (int round = 0; foundNew && round < maximumRounds; ++round) {
        foundNew = false;
        for (const Pid thread : threads(pid)) {
            const auto now = priorityOf(thread);
            if (!now || lowered(*now, loan.background) == *now) continue;
            if (!setPriority(thread, *now, lowered(*now, loan.background))) continue;
            loan.before.emplace(thread, *now);
            foundNew = true;
        }
    }
}

bool LinuxProcessControl::send(Signal signal, const Incarnation& process) {
    const Hold hold(process.pid);
    if (!hold || !isAllowed(process.pid) || !isAlive(process)) return false;
    return hold.send(process.pid, static_cast<int>(signal));
}

bool LinuxProcessControl::lowerPriority(const Incarnation& process) {
    forgetTheGone();
    const Hold hold(process.pid);
    if (!hold || !isAllowed(process.pid) || !isAlive(process)) return false;
    const auto [place, isNew] = loans_.try_emplace(process);
    Loan& loan = place->second;
    if (isNew) {
        const bool mayComeBack = holdsRight_ || limitAllowsToRaise(process.pid);
        loan.background = mayComeBack ? Background::idle : Background::batch;
        loan.sinceTicks = ticksSinceBoot();
        noteThreads(process.pid, loan);
    }
    lowerThreads(process.pid, loan);
    const auto after = priorityOf(process.pid);
    const bool isLow = after && *after == lowered(*after, loan.background);
    if (!isLow && isNew) loans_.erase(place);
    return isLow;
}

bool LinuxProcessControl::restorePriority(const Incarnation& process) {
    const auto node = loans_.extract(process);
    if (node.empty()) return false;
    const Hold hold(process.pid);
    if (!hold || !isAllowed(process.pid) || !isAlive(process)) return false;
    const Loan& loan = node.mapped();
    const auto main = loan.before.find(process.pid);
    const ThreadPriority newcomers = main == loan.before.end() ? ThreadPriority{} : main->second;
    restoreHeirs(process.pid, loan, newcomers);
    return restoreThreads(process.pid, loan, newcomers);
}

/// A priority that the thread itself changed meanwhile is left alone.
bool LinuxProcessControl::restoreThreads(Pid pid, const Loan& loan, const ThreadPriority& newcomers) const {
    bool allTook = true;
    for (const Pid thread : threads(pid)) {
        const auto now = priorityOf(thread);
        if (!now) continue;
        const auto known = loan.before.find(thread);
        const ThreadPriority& before = known == loan.before.end() ? newcomers : known->second;
        const ThreadPriority low = lowered(before, loan.background);
        const ThreadPriority wanted{.policy = now->policy == low.policy ? before.policy : now->policy,
                                    .disk = now->disk == low.disk ? before.disk : now->disk};
        allTook = setPriority(thread, *now, wanted) && allTook;
    }
    return allTook;
}

bool LinuxProcessControl::isLoaned(Pid pid, const ProcStat& stat) const {
    return loans_.contains({.pid = pid, .startTime = dateOfTicks_(stat.startTicks)});
}

void LinuxProcessControl::restoreHeirs(Pid pid, const Loan& loan, const ThreadPriority& newcomers) const {
    const Loan heirsLoan{.background = loan.background, .before = {}, .sinceTicks = loan.sinceTicks};
    std::vector<Pid> heirs = children(pid);
    for (std::size_t next = 0; next < heirs.size(); ++next) {
        const Pid heir = heirs[next];
        const auto found = readProcStat(proc_, heir);
        if (!found || found->startTicks < loan.sinceTicks || isLoaned(heir, *found) || !isAllowed(heir)) continue;
        restoreThreads(heir, heirsLoan, newcomers);
        const auto grandchildren = children(heir);
        heirs.insert(heirs.end(), grandchildren.begin(), grandchildren.end());
    }
}

void LinuxProcessControl::forgetTheGone() {
    std::erase_if(loans_, [this](const auto& loan) { return !isAlive(loan.first); });
}

}  // namespace tolvane::linuxhost
