#include <algorithm>

#include "app/AppModelPrivate.h"

namespace tolvane {

namespace {

constexpr Seconds leastGap{55.0};
constexpr Seconds momentsSpan{86'400.0};
constexpr std::size_t largestKept = 25;
/// A line below the largest is kept from this percent of a core on, so that a busy small process is on record too.
constexpr double busyPercent = 10.0;

Holder holder(Line& line) {
    return {.key = std::move(line.id),
            .title = std::move(line.title),
            .bundlePath = std::move(line.bundlePath),
            .memory = line.memory,
            .compressed = line.compressed,
            .cpu = line.cpu,
            .started = line.started,
            .swapIns = line.swapIns};
}

std::vector<Holder> holders(const Snapshot& snapshot, const LineNames& names) {
    auto lines = Line::build(snapshot.rows, Grouping::apps, snapshot.memory.compressionRatio, names);
    Line::sort(lines, {{.field = LineField::memory, .ascending = false}});
    std::vector<Holder> holders;
    holders.reserve(std::min(lines.size(), largestKept));
    for (std::size_t place = 0; place < lines.size(); ++place) {
        if (place < largestKept || lines[place].cpu >= busyPercent) holders.push_back(holder(lines[place]));
    }
    return holders;
}

Moment moment(const Snapshot& snapshot, const LineNames& names) {
    const auto& memory = snapshot.memory;
    const auto& cpu = snapshot.cpu;
    return {.date = snapshot.date,
            .total = memory.total,
            .used = memory.used(),
            .compressed = memory.compressed,
            .swapUsed = memory.swapUsed,
            .pressure = static_cast<std::int64_t>(memory.pressure),
            .cpu = cpu.user + cpu.system,
            .cores = cpu.cores,
            .holders = holders(snapshot, names),
            .performance = cpu.performance,
            .efficiency = cpu.efficiency,
            .swapIns = memory.swapIns};
}

}  // namespace

void AppModel::Private::recordMoment() {
    const auto& now = *model.snapshot;
    const Date last = model.moments->empty() ? distantPast : model.moments->back().date;
    if (now.date - last < leastGap) return;
    auto latest = moment(now, names);
    model.moments.update([&](std::vector<Moment>& moments) {
        std::erase_if(moments, [&](const Moment& each) { return now.date - each.date > momentsSpan; });
        moments.push_back(std::move(latest));
    });
    store.append(model.moments->back());
}

}  // namespace tolvane
