#include "app/sampling/SnapshotReader.h"

#include <utility>

#include "core/rules/ClaudeRoster.h"
#include "core/rules/SessionLabels.h"

namespace tolvane {

namespace {

/// A synchronised clock runs a little fast or slow at times; a larger jump means that the clock was set.
constexpr Seconds leastSetting{1.0};

}  // namespace

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
    Snapshot snapshot;
    snapshot.date = host_.clock->now();
    // It is unknown which clock dated the activation, but it came after the previous snapshot.
    const bool wasSet = followClock(snapshot.date);
    for (const auto& each : activations) tracker_.noteActivation(each.appPath, wasSet ? snapshot.date : each.date);
    snapshot.rows = tracker_.update(reader_.readAll(), snapshot.date);
    snapshot.claude = ClaudeRoster::load(home_);
    SessionLabels::apply(snapshot.claude, snapshot.rows);
    projects_.apply(snapshot.rows);
    snapshot.cpu = readLoad();
    snapshot.memory = SystemMemory::read(*host_.machine);
    return snapshot;
}

bool SnapshotReader::followClock(Date now) {
    const auto before = std::exchange(latest_, Reading{.date = now, .steady = host_.clock->steadyTime()});
    if (!before) return false;
    const Seconds by = (now - before->date) - (latest_->steady - before->steady);
    if (std::chrono::abs(by) < leastSetting) return false;
    tracker_.clockWasSet(by);
    return true;
}

CPULoad SnapshotReader::readLoad() {
    auto before = std::exchange(ticks_, host_.machine->ticksPerCore());
    if (!before || !ticks_ || before->size() != ticks_->size()) return {};
    return CPULoad::between(*before, *ticks_, layout_);
}

}  // namespace tolvane
