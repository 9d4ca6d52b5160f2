#pragma once

#include "platform/ProcessInspection.h"
#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// Asks the kernel afresh at every call and keeps nothing, so questions may come in any order.
/// On this host a program's path says whether it belongs to the system, so that field stays unset. A process that
/// executes another program keeps its start time and takes that program's name: the stamp is made of the names.
class MacProcessInspection : public ProcessInspection {
public:
    explicit MacProcessInspection(Kernel kernel);

    double nanosPerTick() const override { return nanosPerTick_; }
    std::vector<Pid> allPids() override;
    std::optional<BSDRecord> bsdRecord(Pid pid) override;
    std::optional<UsageRecord> usage(Pid pid) override;
    std::optional<Text> executablePath(Pid pid) override;
    std::optional<TextList> arguments(Pid pid) override;
    std::optional<std::vector<std::string>> environment(Pid pid) override;
    std::optional<MemoryRecord> memoryRecord(Pid pid) override;
    std::optional<Text> workingDirectory(Pid pid) override;
    std::optional<bool> belongsToSystem(Pid) override { return std::nullopt; }
    std::vector<int> listeningPorts(Pid pid) override;

private:
    Kernel kernel_;
    double nanosPerTick_;
};

}  // namespace tolvane::machost
