#pragma once

#include "platform/ProcessControl.h"
#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// Darwin's background priority, which a process's user can take and give back at will; niceness is never touched.
/// There is no handle on a process as on other systems: the check comes right before the act.
/// Never acts on pid 1, on this program and its ancestors, or on another user's process.
class MacProcessControl : public ProcessControl {
public:
    explicit MacProcessControl(Kernel kernel);

    bool send(Signal signal, const Incarnation& process) override;
    std::optional<Pid> start(const DetachedStart& program) override;
    bool lowerPriority(const Incarnation& process) override;
    bool restorePriority(const Incarnation& process) override;

private:
    bool isOurs(const Incarnation& process) const;
    bool isAncestor(Pid pid) const;
    bool setPriority(const Incarnation& process, int value) const;

    Kernel kernel_;
};

}  // namespace tolvane::machost
