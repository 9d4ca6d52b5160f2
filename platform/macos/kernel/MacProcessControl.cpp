#include "platform/macos/kernel/MacProcessControl.h"

#include <utility>

#include "platform/macos/kernel/KernelNumbers.h"
#include "platform/macos/kernel/ProcessFacts.h"
#include "platform/macos/kernel/Spawn.h"

namespace tolvane::machost {

namespace {

constexpr int maximumGenerations = 64;

Pid parentOf(const KernelCalls& kernel, Pid pid) {
    const auto info = readBSDInfo(kernel, pid);
    return info ? static_cast<Pid>(info->ppid) : 0;
}

SpawnRequest requestOf(const DetachedStart& program) {
    return {.path = program.executable,
            .arguments = program.args.empty() ? std::vector{program.executable} : program.args,
            .environment = program.environment,
            .actions = {OpenFile{.descriptor = 0, .path = "/dev/null"},
                        OpenFile{.descriptor = 1, .path = program.log, .flags = appendToLog, .mode = logMode},
                        Duplicate{.source = 1, .descriptor = 2}, ChangeFolder{.path = program.workingDirectory}},
            .flags = ownSession};
}

}  // namespace

MacProcessControl::MacProcessControl(Kernel kernel) : kernel_(std::move(kernel)) {}

bool MacProcessControl::isAncestor(Pid pid) const {
    Pid ancestor = parentOf(*kernel_, kernel_->ownPid());
    for (int generation = 0; ancestor > 1 && generation < maximumGenerations; ++generation) {
        if (ancestor == pid) return true;
        ancestor = parentOf(*kernel_, ancestor);
    }
    return false;
}

bool MacProcessControl::isOurs(const Incarnation& process) const {
    if (process.pid < 2 || process.pid == kernel_->ownPid() || isAncestor(process.pid)) return false;
    const auto info = readBSDInfo(*kernel_, process.pid);
    return info && info->uid == kernel_->ownUser() && startTimeOf(*info) == process.startTime;
}

bool MacProcessControl::send(Signal signal, const Incarnation& process) {
    return isOurs(process) && kernel_->sendSignal(process.pid, static_cast<int>(signal)) == 0;
}

bool MacProcessControl::setPriority(const Incarnation& process, int value) const {
    return isOurs(process) && kernel_->setPriority(darwinProcess, static_cast<std::uint32_t>(process.pid), value) == 0;
}

bool MacProcessControl::lowerPriority(const Incarnation& process) { return setPriority(process, backgroundPriority); }

bool MacProcessControl::restorePriority(const Incarnation& process) { return setPriority(process, 0); }

std::optional<Pid> MacProcessControl::start(const DetachedStart& program) {
    Pid pid = 0;
    if (kernel_->spawn(requestOf(program), &pid) != 0) return std::nullopt;
    return pid;
}

}  // namespace tolvane::machost
