// What one reading of all processes costs, beside a floor that reads plainly, in one run.
//
//     sweeps [--counts 300,1000,5000] [--ticks 20] [--tick 1000] [--only NAME]
//     sweeps --alone [--ticks 60]         only our reading, once a second, over the processes that are there
//     sweeps --alone-floor [--ticks 60]   only the floor
//
// Each reading's CPU time is taken around the call; floor and reader take turns, half a tick apart. Prints one
// Markdown table of medians.

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "bench/Floor.h"
#include "bench/Measured.h"
#include "core/sampling/ProcessReader.h"
#include "platform/linux/processes/LinuxProcessInspection.h"

namespace tolvane::bench {
namespace {

using linuxhost::LinuxInspectionOptions;
using linuxhost::LinuxProcessInspection;

struct Case {
    std::string name;
    std::vector<std::string> population;
    bool backToBack = false;
};

struct Settings {
    std::vector<int> counts = {300, 1000, 5000};
    int ticks = 20;
    std::chrono::milliseconds tick{1000};
    std::string only;
    bool alone = false;
    bool aloneFloor = false;
};

const std::vector<Case> cases = {
    {"groups, 10 % active", {"--groups", "60", "--stir", "10"}},
    {"no groups", {}},
    {"no groups, 10 % stir", {"--stir", "10"}},
    {"no groups, 10 x threads", {"--threads", "90"}},
    {"groups, 10 % active, back to back", {"--groups", "60", "--stir", "10"}, true},
    {"no groups, back to back", {}, true},
};

struct Result {
    double floor = 0;
    double ours = 0;
    std::size_t processes = 0;
    std::size_t groups = 0;
};

/// The first sweep knows nothing, and the second one reads every process again.
constexpr int warmUps = 3;

class Comparison {
public:
    Comparison() : inspection_(options()), reader_(inspection_, false) {}

    Result run(const Case& how, const Settings& settings) {
        std::vector<double> floor;
        std::vector<double> ours;
        const auto half = how.backToBack ? std::chrono::milliseconds(5) : settings.tick / 2;
        for (int count = -warmUps; count < settings.ticks; ++count) {
            const double plain = cpuMillisecondsOf([&] { floor_.sweep(); });
            std::this_thread::sleep_for(half);
            const double own = cpuMillisecondsOf([&] { processes_ = reader_.readAll().size(); });
            std::this_thread::sleep_for(half);
            if (count < 0) continue;
            floor.push_back(plain);
            ours.push_back(own);
        }
        return {medianOf(floor), medianOf(ours), processes_, inspection_.watchedGroups()};
    }

private:
    static LinuxInspectionOptions options() {
        return {.clock = linuxhost::LinuxClockFacts::read(), .uid = ::getuid(), .home = "/home/user"};
    }

    Floor floor_;
    LinuxProcessInspection inspection_;
    ProcessReader reader_;
    std::size_t processes_ = 0;
};

void print(const Case& each, const Result& result) {
    const auto processes = static_cast<double>(result.processes);
    std::printf("| %s | %zu | %zu | %.2f | %.2f | %.2f | %.2f | **%.2f** |\n", each.name.c_str(), result.processes,
                result.groups, result.floor, result.ours, result.floor * 1e3 / processes, result.ours * 1e3 / processes,
                result.ours / result.floor);
    std::fflush(stdout);
}

void compareAll(const Settings& settings) {
    std::printf("| case | processes | groups | floor ms | ours ms | floor us/process | ours us/process | x floor |\n");
    std::printf("|---|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const int count : settings.counts) {
        for (const Case& each : cases) {
            if (!settings.only.empty() && each.name.find(settings.only) == std::string::npos) continue;
            auto arguments = each.population;
            arguments.insert(arguments.begin(), std::to_string(count));
            const RunningPopulation population(arguments);
            std::this_thread::sleep_for(std::chrono::seconds(1));
            print(each, Comparison().run(each, settings));
        }
    }
}

/// For measuring from outside, as peers are.
void repeat(const Settings& settings, const std::function<void()>& sweep) {
    for (int count = 0; count < settings.ticks; ++count) {
        sweep();
        std::this_thread::sleep_for(settings.tick);
    }
}

void readAlone(const Settings& settings) {
    if (settings.aloneFloor) {
        Floor floor;
        return repeat(settings, [&] { floor.sweep(); });
    }
    LinuxProcessInspection inspection(
        {.clock = linuxhost::LinuxClockFacts::read(), .uid = ::getuid(), .home = "/home/user"});
    ProcessReader reader(inspection, false);
    repeat(settings, [&] { reader.readAll(); });
}

std::vector<int> numbersIn(std::string text) {
    std::vector<int> numbers;
    for (std::size_t at = 0; at < text.size();) {
        const auto comma = std::min(text.find(',', at), text.size());
        numbers.push_back(std::atoi(text.substr(at, comma - at).c_str()));
        at = comma + 1;
    }
    return numbers;
}

Settings settingsFrom(int argc, char** argv) {
    Settings settings;
    for (int index = 1; index < argc; ++index) {
        const std::string option = argv[index];
        const std::string value = index + 1 < argc ? argv[index + 1] : "";
        if (option == "--counts") settings.counts = numbersIn(value);
        if (option == "--ticks") settings.ticks = std::atoi(value.c_str());
        if (option == "--tick") settings.tick = std::chrono::milliseconds(std::atoi(value.c_str()));
        if (option == "--only") settings.only = value;
        if (option == "--alone") settings.alone = true;
        if (option == "--alone-floor") settings.aloneFloor = true;
    }
    return settings;
}

}  // namespace
}  // namespace tolvane::bench

int main(int argc, char** argv) {
    const auto settings = tolvane::bench::settingsFrom(argc, argv);
    if (settings.alone || settings.aloneFloor) {
        tolvane::bench::readAlone(settings);
    } else {
        tolvane::bench::compareAll(settings);
    }
    return 0;
}
