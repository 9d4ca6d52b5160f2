#pragma once

#include "platform/ProcessInspection.h"
#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// Asks the kernel afresh at every call and keeps nothing, so any order of questions will do.
///
/// Whether a program belongs to the system is told by its path here, so that is left open. A process that starts
/// another program in its place keeps its start time and gets that program's name: the stamp is made of the names.
class MacProcessInspection : public ProcessInspection {
public:
    explicit MacProcessInspection(Kernel kernel);

    double nanosPerTick() const override { return nanosPerTick_; }
    std::vector<Pid> allPids() override;
    std::optional<BSDRecord> bsdRecord(Pid pid) override;
    std::optional<UsageRecord> usage(Pid pid) override;
    std::optional<Text> executablePath(Pid pid) override;
    std::optional<std::string> argumentsBlock(Pid pid) override;
    std::optional<MemoryRecord> memoryRecord(Pid pid) override;
    std::optional<Text> workingDirectory(Pid pid) override;
    std::optional<bool> belongsToSystem(Pid) override { return std::nullopt; }
    std::vector<int> listeningPorts(Pid pid) override;

private:
    Kernel kernel_;
    double nanosPerTick_;
};

}  // namespace tolvane::machost
