// The whole program with its window open, section by section: what the window takes of the processor beside the
// sampling, and how long a turn of its event loop keeps a key press waiting.
//
//     window_turns [TICKS_PER_SECTION] [INTERVAL_SECONDS] [LONG_SECONDS]
//
// Works on the display that is there, "offscreen" included, and on the processes that are there. Everything that is
// not the sampler's thread counts as the window's: what the model does after each sample, the window system's threads.
// With a third argument it stays at the processes for so long in the end, five minutes and more for a tick with advice.

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "app/preferences/LayeredPreferences.h"
#include "bench/Turns.h"
#include "desktop/processes/ProcessesPage.h"
#include "desktop/program/Program.h"
#include "platform/linux/makeLinuxHost.h"

namespace {

using namespace tolvane;
using namespace tolvane::bench;
using namespace tolvane::desktop;

void pass(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

struct Split {
    double sampling = 0;
    double rest = 0;
};

/// The sampler is the busiest of the threads that carry the program's own name.
Split splitOf(const std::vector<ThreadTime>& threads, const std::string& program) {
    Split split;
    for (const auto& each : threads) {
        split.rest += each.milliseconds;
        if (!each.isMain && each.name == program) split.sampling = std::max(split.sampling, each.milliseconds);
    }
    split.rest -= split.sampling;
    return split;
}

double share(std::vector<double>& sorted, double part) {
    if (sorted.empty()) return 0;
    const auto place = static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1) + 0.5);
    return sorted[place];
}

std::string spread(std::vector<double> values) {
    std::ranges::sort(values);
    char text[64];
    std::snprintf(text, sizeof text, "%.1f / %.1f / %.1f", share(values, 0.5), share(values, 0.99), share(values, 1));
    return text;
}

/// The longest turn of each tick.
class LongestTurns {
public:
    void add(const std::vector<Turn>& turns) {
        Turn most;
        for (const auto& turn : turns) {
            most.wall = std::max(most.wall, turn.wall);
            most.cpu = std::max(most.cpu, turn.cpu);
        }
        wall_.push_back(most.wall);
        cpu_.push_back(most.cpu);
    }
    void print() const { std::printf(" %s | %s |\n", spread(cpu_).c_str(), spread(wall_).c_str()); }

private:
    std::vector<double> wall_, cpu_;
};

class Bench {
public:
    Bench(Shell& shell, std::string program, int interval)
        : shell_(shell), program_(std::move(program)), interval_(interval) {}

    void section(const char* title, int ticks) {
        pass(1000 * interval_);
        turns_.take();
        const auto before = splitOf(threadTimes(), program_);
        LongestTurns longest;
        for (int tick = 0; tick < ticks; ++tick) {
            pass(1000 * interval_);
            longest.add(turns_.take());
        }
        const auto after = splitOf(threadTimes(), program_);
        const double sampling = (after.sampling - before.sampling) / ticks, rest = (after.rest - before.rest) / ticks;
        std::printf("| %s | %.2f | %.2f | %.2f |", title, sampling, rest, rest / sampling);
        longest.print();
        std::fflush(stdout);
    }
    void open(AppSection section) {
        auto* sidebar = shell_.window()->findChild<Sidebar*>();
        emit sidebar->chosen(section);
    }
    void group(int choice) {
        auto* page = shell_.window()->findChild<ProcessesPage*>();
        emit static_cast<SegmentedPicker*>(page->controls().front())->chosen(choice);
    }

private:
    Shell& shell_;
    std::string program_;
    int interval_;
    Turns turns_;
};

void run(Bench& bench, int ticks, int longTicks) {
    std::printf(
        "| section | sampling, ms CPU | the rest, ms CPU | rest/sampling | longest turn, ms CPU | longest turn, "
        "ms |\n|---|---:|---:|---:|---:|---:|\n");
    const struct {
        const char* title;
        AppSection section;
        int grouping;
    } all[] = {
        {"processes by app", AppSection::processes, 0},
        {"processes by project", AppSection::processes, 1},
        {"all processes", AppSection::processes, 2},
        {"projects", AppSection::projects, -1},
        {"suggestions", AppSection::suggestions, -1},
        {"history", AppSection::history, -1},
        {"stats", AppSection::stats, -1},
        {"rules", AppSection::rules, -1},
        {"activity", AppSection::activity, -1},
    };
    for (const auto& each : all) {
        bench.open(each.section);
        if (each.grouping >= 0) bench.group(each.grouping);
        bench.section(each.title, ticks);
    }
    if (longTicks == 0) return;
    bench.open(AppSection::processes);
    bench.section("processes, long", longTicks);
}

int argument(int argc, char** argv, int place, int otherwise) {
    return argc > place ? std::atoi(argv[place]) : otherwise;
}

}  // namespace

int main(int argc, char** argv) {
    const int ticks = argument(argc, argv, 1, 30), interval = argument(argc, argv, 2, 2);
    const int longTicks = argument(argc, argv, 3, 0) / interval;
    auto host = linuxhost::makeLinuxHost(linuxhost::processEnvironment(),
                                         LayeredPreferences::layer({{"openInterval", std::int64_t{interval}}}));
    host.locale = "en_US";
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Program program(application, std::move(host), {});
    auto& shell = program.show(true);
    Bench bench(shell, "window_turns", interval);
    pass(3000);
    run(bench, ticks, longTicks);
    return 0;
}
