#pragma once

#include <memory>
#include <utility>

#include "platform/ProcessInspection.h"

namespace tolvane::fakes {

/// Forwards every call; a test overrides the ones it wants to intercept.
class ForwardingInspection : public ProcessInspection {
public:
    explicit ForwardingInspection(std::unique_ptr<ProcessInspection> inner) : inner_(std::move(inner)) {}

    double nanosPerTick() const override { return inner_->nanosPerTick(); }
    std::vector<Pid> allPids() override { return inner_->allPids(); }
    std::optional<BSDRecord> bsdRecord(Pid pid) override { return inner_->bsdRecord(pid); }
    std::optional<UsageRecord> usage(Pid pid) override { return inner_->usage(pid); }
    std::optional<Text> executablePath(Pid pid) override { return inner_->executablePath(pid); }
    std::optional<TextList> arguments(Pid pid) override { return inner_->arguments(pid); }
    std::optional<std::vector<std::string>> environment(Pid pid) override { return inner_->environment(pid); }
    std::optional<MemoryRecord> memoryRecord(Pid pid) override { return inner_->memoryRecord(pid); }
    std::optional<Text> workingDirectory(Pid pid) override { return inner_->workingDirectory(pid); }
    std::optional<bool> belongsToSystem(Pid pid) override { return inner_->belongsToSystem(pid); }
    std::vector<int> listeningPorts(Pid pid) override { return inner_->listeningPorts(pid); }
    std::map<Pid, std::vector<int>> listeningPortsOf(const std::vector<Pid>& pids) override {
        return inner_->listeningPortsOf(pids);
    }

private:
    std::unique_ptr<ProcessInspection> inner_;
};

}  // namespace tolvane::fakes
