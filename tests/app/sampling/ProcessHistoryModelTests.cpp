#include <gtest/gtest.h>

#include <map>
#include <random>

#include "app/sampling/ProcessHistory.h"

namespace tolvane {
namespace {

constexpr std::uint64_t MiB = 1'048'576;

/// The history as plain lists, one per process, to compare the rings with.
class PlainHistory {
public:
    void record(const std::vector<ProcRow>& rows, Date date) {
        std::map<Pid, std::vector<HistoryPoint>> next;
        for (const auto& row : rows) {
            const auto& sample = row.sample;
            const bool isSizeable = sample.footprint + sample.compressed > 20 * MiB || row.cpuPercent >= 5.0;
            if (!isSizeable && !lists_.contains(row.id())) continue;
            auto points = lists_[row.id()];
            if (!points.empty() && points.front().date < sample.startTime) points.clear();
            points.push_back({date, sample.footprint, sample.compressed, row.cpuPercent});
            if (points.size() > 360) points.erase(points.begin());
            next[row.id()] = points;
        }
        lists_ = next;
    }

    std::vector<HistoryPoint> points(const std::vector<Pid>& pids) const {
        if (pids.empty()) return {};
        if (pids.size() == 1) return list(pids.front());
        std::map<Date, HistoryPoint> merged;
        for (const Pid pid : pids) {
            for (const auto& point : list(pid)) {
                auto& sum = merged[point.date];
                sum.date = point.date;
                sum.footprint += point.footprint;
                sum.compressed += point.compressed;
                sum.cpu += point.cpu;
            }
        }
        std::vector<HistoryPoint> points;
        for (const auto& [date, point] : merged) points.push_back(point);
        return points;
    }

private:
    std::vector<HistoryPoint> list(Pid pid) const {
        const auto found = lists_.find(pid);
        return found == lists_.end() ? std::vector<HistoryPoint>{} : found->second;
    }

    std::map<Pid, std::vector<HistoryPoint>> lists_;
};

struct ArbitraryMachine {
    std::mt19937 random;
    Date now{Seconds{800'000'000}};
    std::map<Pid, Date> processes;

    std::size_t below(std::size_t limit) { return random() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }

    void comeAndGo() {
        for (Pid pid = 1; pid <= 12; ++pid) {
            if (once(40)) processes.erase(pid);
            if (once(20)) processes[pid] = now - Seconds{static_cast<double>(below(4)) * 0.5};
        }
    }
    std::vector<ProcRow> rows() {
        std::vector<ProcRow> rows;
        for (const auto& [pid, start] : processes) {
            if (once(200)) continue;
            ProcRow row;
            row.sample.pid = pid;
            row.sample.startTime = start;
            row.sample.footprint = (18 + below(4)) * MiB;
            row.sample.compressed = below(2);
            // Multiples of an eighth, so that sums do not round.
            row.cpuPercent = static_cast<double>(below(48)) / 8;
            rows.push_back(row);
        }
        return rows;
    }
};

TEST(ProcessHistoryModel, agreesWithPlainListsOnArbitraryMachines) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        ArbitraryMachine machine{std::mt19937(seed)};
        ProcessHistory history;
        PlainHistory plain;
        for (int tick = 0; tick < 500; ++tick) {
            machine.now += Seconds{machine.once(100) ? -30.0 : 5.0};
            machine.comeAndGo();
            const auto rows = machine.rows();
            history.record(rows, machine.now);
            plain.record(rows, machine.now);
            if (tick % 10 != 0) continue;
            for (Pid pid = 1; pid <= 12; ++pid) {
                ASSERT_EQ(history.points({pid}), plain.points({pid})) << "seed " << seed << ", tick " << tick;
            }
            const std::vector<Pid> some = {3, 1, 7, 99};
            ASSERT_EQ(history.points(some), plain.points(some)) << "seed " << seed << ", tick " << tick;
        }
    }
}

}  // namespace
}  // namespace tolvane
