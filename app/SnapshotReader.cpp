#include "app/SnapshotReader.h"

#include <utility>

#include "core/rules/ClaudeRoster.h"
#include "core/sampling/SessionLabels.h"

namespace tolvane {

SnapshotReader::SnapshotReader(Host& host)
    : host_(host),
      home_(host.folders->home()),
      layout_(CoreLayout::read(*host.machine)),
      inspection_(host.makeInspection()),
      reader_(*inspection_, layout_.efficiency > 0),
      tracker_(*host.applications),
      projects_(ProjectRoots(home_)),
      ticks_(host.machine->ticksPerCore()) {}

Snapshot SnapshotReader::read(const std::vector<Activation>& activations) {
    for (const auto& activation : activations) tracker_.noteActivation(activation.bundlePath, activation.date);
    Snapshot snapshot;
    snapshot.date = host_.clock->now();
    snapshot.rows = tracker_.update(reader_.readAll(), snapshot.date);
    snapshot.claude = ClaudeRoster::load(home_);
    SessionLabels::apply(snapshot.claude, snapshot.rows);
    projects_.apply(snapshot.rows);
    snapshot.cpu = readLoad();
    snapshot.memory = SystemMemory::read(*host_.machine);
    return snapshot;
}

CPULoad SnapshotReader::readLoad() {
    auto before = std::exchange(ticks_, host_.machine->ticksPerCore());
    if (!before || !ticks_ || before->size() != ticks_->size()) return {};
    return CPULoad::between(*before, *ticks_, layout_);
}

}  // namespace tolvane
