#include "app/model/DayMoment.h"

#include <string_view>
#include <unordered_map>

namespace tolvane {

namespace {

constexpr std::size_t largestKept = 25;
/// A row that is not among the largest is kept from this percent of a core on, so that small busy processes show too.
constexpr double busyPercent = 10.0;

/// The texts of the latest moment, for reuse: nearly all stay the same from minute to minute.
class KnownTexts {
public:
    explicit KnownTexts(const std::vector<Moment>& moments) {
        if (moments.empty()) return;
        for (const auto& holder : moments.back().holders) {
            add(holder.key);
            add(holder.title);
            if (holder.appPath) add(*holder.appPath);
        }
    }

    Text text(std::string_view wanted) const {
        const auto known = texts_.find(wanted);
        return known == texts_.end() ? Text(wanted) : known->second;
    }

private:
    void add(const Text& text) { texts_.try_emplace(text, text); }

    /// The keys are views of the values, which hold their bytes.
    std::unordered_map<std::string_view, Text> texts_;
};

Holder holder(const TableRow& line, const KnownTexts& texts) {
    return {.key = texts.text(line.id),
            .title = texts.text(line.title),
            .appPath = line.appPath ? std::optional(texts.text(*line.appPath)) : std::nullopt,
            .memory = line.memory,
            .compressed = line.compressed,
            .cpu = line.cpu,
            .started = line.started,
            .swapIns = line.swapIns};
}

std::vector<Holder> holders(const Snapshot& snapshot, const RowNames& names, const KnownTexts& texts) {
    auto lines = TableRow::build(snapshot.rows, Grouping::apps, snapshot.memory.compressionRatio, names);
    TableRow::sort(lines, {{.field = RowField::memory, .ascending = false}});
    std::vector<Holder> holders;
    for (std::size_t place = 0; place < lines.size(); ++place) {
        if (place < largestKept || lines[place].cpu >= busyPercent) holders.push_back(holder(lines[place], texts));
    }
    holders.shrink_to_fit();
    return holders;
}

}  // namespace

Moment momentOf(const Snapshot& snapshot, const RowNames& names, const std::vector<Moment>& earlier) {
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
            .holders = holders(snapshot, names, KnownTexts(earlier)),
            .performance = cpu.performance,
            .efficiency = cpu.efficiency,
            .swapIns = memory.swapIns};
}

}  // namespace tolvane
