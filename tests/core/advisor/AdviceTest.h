#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/advisor/AdviceScene.h"
#include "core/advisor/Advisor.h"
#include "tests/fakes/RuleScenes.h"

namespace tolvane {

/// A user's 16 GB machine at rest, on which each test makes something stand out.
struct AdviceTest : testing::Test {
    static constexpr std::uint64_t MiB = fakes::megabyte;
    static constexpr std::uint64_t GiB = 1024 * MiB;
    static constexpr Date now = fakes::someNow;
    static constexpr std::string_view shop = "/home/ada/src/shop";

    World world = fakes::worldOf({});
    SystemMemory memory{.total = 16 * GiB};
    Advisor advisor;
    std::map<Pid, std::vector<int>> ports;
    std::set<Pid> managed;
    std::map<std::string, std::string, std::less<>> simulators;
    /// How often each process's ports were looked up.
    std::map<Pid, int> portsAsked;
    /// Number of calls; one call may look up several processes.
    int lookUps = 0;

    /// Adds a row of 10 MB that was used just now. The reference holds until the next row is added.
    ProcRow& add(Pid pid, Pid ppid, std::string_view name, TextList args = {}) {
        auto row = fakes::row(pid, ppid, name, std::move(args));
        row.sample.footprint = 10 * MiB;
        row.sample.compressed = 0;
        row.sample.startTime = now - Seconds{86'400};
        row.unusedSince = now;
        world.rows.push_back(std::move(row));
        return world.rows.back();
    }
    ProcRow& addApp(Pid pid, std::string_view name, std::string_view appID) {
        auto& row = add(pid, 1, name);
        row.appPath = "/Applications/" + std::string(name) + ".app";
        row.appID = appID;
        return row;
    }
    /// A dev server in a project: "node /…/bin/vite".
    ProcRow& addServer(Pid pid, Pid ppid, std::string_view project = shop) {
        auto& row = add(pid, ppid, "node", {"node", std::string(project) + "/node_modules/.bin/vite"});
        row.project = project;
        return row;
    }
    /// Gives the row a memory point every five minutes over the last `hours`, rising from `from` to its present
    /// footprint.
    void growTo(const ProcRow& row, std::uint64_t from, double hours) {
        Advisor::Track track{.start = row.sample.startTime, .points = {}};
        const int steps = static_cast<int>(hours * 12);
        for (int step = 0; step <= steps; ++step) {
            const double part = static_cast<double>(step) / steps;
            const double rise = static_cast<double>(row.sample.footprint) - static_cast<double>(from);
            track.points.push_back({.date = now - Seconds{300.0 * (steps - step)},
                                    .footprint = from + static_cast<std::uint64_t>(part * rise)});
        }
        advisor.tracks.insert_or_assign(row.id(), std::move(track));
    }
    /// Makes the row use this many cores in each of the last `intervals` of five minutes.
    void work(const ProcRow& row, double cores, int intervals = 3) {
        Advisor::CPUTrack track{.start = row.sample.startTime, .points = {}};
        advisor.cpuDates.clear();
        for (int each = 0; each <= intervals; ++each) {
            const Date date = now - Seconds{300.0 * (intervals - each)};
            advisor.cpuDates.push_back(date);
            track.points.emplace(date, static_cast<std::uint64_t>(cores * 300e9 * each));
        }
        advisor.cpuTracks.insert_or_assign(row.id(), std::move(track));
    }

    std::vector<Suggestion> suggestions(std::string_view locale = "en_US") {
        const auto portsOf = [this](const std::vector<Pid>& pids) {
            ++lookUps;
            std::map<Pid, std::vector<int>> known;
            for (const Pid pid : pids) {
                ++portsAsked[pid];
                if (const auto found = ports.find(pid); found != ports.end()) known.insert(*found);
            }
            return known;
        };
        const auto nameOf = [this](std::string_view device) -> std::optional<std::string> {
            const auto found = simulators.find(device);
            if (found == simulators.end()) return std::nullopt;
            return found->second;
        };
        return advisor.suggestions({.world = world,
                                    .memory = memory,
                                    .now = now,
                                    .ports = portsOf,
                                    .locale = locale,
                                    .managed = managed,
                                    .simulatorName = nameOf});
    }
    std::vector<std::string> ids() {
        std::vector<std::string> found;
        for (const auto& each : suggestions()) found.push_back(each.id);
        return found;
    }
    /// Expects exactly one suggestion and returns it.
    Suggestion only() {
        const auto all = suggestions();
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? Suggestion{} : all.front();
    }
};

}  // namespace tolvane
