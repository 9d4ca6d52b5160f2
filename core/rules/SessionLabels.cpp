#include "core/rules/SessionLabels.h"

#include "core/sampling/PidTable.h"
#include "core/sampling/ProcessTree.h"

namespace tolvane::SessionLabels {

namespace {

struct Claim {
    Pid pid = 0;
    Text label;
};

/// When several workers claim a pid, the last claim wins.
PidTable<Claim> claims(const std::vector<ClaudeWorker>& workers, const std::vector<ProcRow>& rows) {
    const ProcessTree tree(rows);
    PidTable<Claim> table;
    for (const auto& worker : workers) {
        const Text text = label(worker);
        table.add({.pid = worker.hostPID, .label = text});
        for (const Pid pid : tree.descendants(worker.hostPID)) table.add({.pid = pid, .label = text});
    }
    table.settle();
    return table;
}

}  // namespace

std::string label(const ClaudeWorker& worker) {
    if (!worker.hasPrompt) return "Claude " + worker.shortID + ", no prompt yet";
    return worker.name ? *worker.name : "Claude " + worker.shortID;
}

void apply(const std::vector<ClaudeWorker>& workers, std::vector<ProcRow>& rows) {
    if (workers.empty()) {
        for (auto& row : rows) row.claudeSession.reset();
        return;
    }
    auto table = claims(workers, rows);
    for (auto& row : rows) {
        const auto* claim = table.find(row.id());
        row.claudeSession = claim ? std::optional(claim->label) : std::nullopt;
    }
}

}  // namespace tolvane::SessionLabels
