// The table of processes in its window, with so many rows that one could not look through them: from a key press in
// the search field, or a click on a column's head, to the new table on the screen.
//
//     table_turns [PROCESSES] [ROUNDS]

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "bench/CrowdHost.h"
#include "desktop/processes/ProcessesPage.h"
#include "desktop/program/Screens.h"
#include "desktop/window/MainWindow.h"

namespace {

using namespace tolvane;
using namespace tolvane::desktop;

/// Counts the paint events of a widget.
class Paintings : public QObject {
public:
    explicit Paintings(QWidget& watched) { watched.installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
};

struct Times {
    std::vector<double> wall, cpu;
};

double milliseconds(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class Bench {
public:
    explicit Bench(ProcessesPage& page) : page_(page), paintings_(*page.table().viewport()) { settle(); }

    /// False when the table was not repainted: then nothing was measured.
    template <typename Action>
    bool measure(Times& times, Action action) {
        const int before = paintings_.count;
        const double wall = milliseconds(CLOCK_MONOTONIC), cpu = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        action();
        while (paintings_.count == before && milliseconds(CLOCK_MONOTONIC) - wall < 5000) QApplication::processEvents();
        times.cpu.push_back(milliseconds(CLOCK_THREAD_CPUTIME_ID) - cpu);
        times.wall.push_back(milliseconds(CLOCK_MONOTONIC) - wall);
        const bool drawn = paintings_.count > before;
        settle();
        return drawn;
    }
    bool type(Times& times, const QString& text) {
        bool drawn = true;
        for (const auto letter : text) drawn = measure(times, [&] { press(Qt::Key_A, letter); }) && drawn;
        return drawn;
    }
    bool erase(Times& times, qsizetype letters) {
        bool drawn = true;
        for (; letters > 0; --letters) drawn = measure(times, [&] { press(Qt::Key_Backspace, {}); }) && drawn;
        return drawn;
    }
    bool click(Times& times, int column) {
        auto* head = page_.table().header();
        const QPoint where(head->sectionViewportPosition(column) + head->sectionSize(column) / 2, head->height() / 2);
        return measure(times, [&] {
            for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
                QMouseEvent event(type, where, head->viewport()->mapToGlobal(where), Qt::LeftButton, held, {});
                QApplication::sendEvent(head->viewport(), &event);
            }
        });
    }
    void group(int choice) {
        emit static_cast<SegmentedPicker*>(page_.controls().front())->chosen(choice);
        settle();
    }

private:
    void press(int key, QChar letter) {
        QKeyEvent event(QEvent::KeyPress, key, {}, letter.isNull() ? QString() : QString(letter));
        QApplication::sendEvent(page_.findChild<QWidget*>(QStringLiteral("search")), &event);
    }
    static void settle() {
        for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
    }

    ProcessesPage& page_;
    Paintings paintings_;
};

void print(const std::string& what, Times times) {
    std::ranges::sort(times.wall);
    std::ranges::sort(times.cpu);
    const auto middle = times.cpu.size() / 2;
    std::printf("| %s | %.1f / %.1f / %.1f | %.1f / %.1f / %.1f |\n", what.c_str(), times.cpu.front(),
                times.cpu[middle], times.cpu.back(), times.wall.front(), times.wall[middle], times.wall.back());
}

/// False when a measurement failed.
bool run(Bench& bench, int rounds) {
    const char* titles[] = {"by app", "by project", "all processes"};
    bool drawn = true;
    for (int grouping = 0; grouping < 3; ++grouping) {
        bench.group(grouping);
        Times typed, erased, sorted;
        for (int round = 0; round < rounds; ++round) {
            drawn = bench.type(typed, QStringLiteral("port=51")) && drawn;
            drawn = bench.erase(erased, 7) && drawn;
            for (const int column : {0, 1, 1, 4, 6}) drawn = bench.click(sorted, column) && drawn;
        }
        print(std::string("a letter more, ") + titles[grouping], typed);
        print(std::string("a letter less, ") + titles[grouping], erased);
        print(std::string("another order, ") + titles[grouping], sorted);
    }
    return drawn;
}

}  // namespace

int main(int argc, char** argv) {
    const int processes = argc > 1 ? std::atoi(argv[1]) : 5000, rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    QApplication application(argc, argv);
    bench::CrowdHost crowd(processes);
    AppModel model(crowd.host, *crowd.windows, false, crowd.executors());
    for (int tick = 0; tick < 3; ++tick) crowd.tick(Seconds{5});
    Look look(*crowd.host.applications, {});
    look.install();
    WindowState state;
    MainWindow window(model, look, state, allScreens(model, look, state, "en_US"));
    window.show();
    auto* page = window.findChild<ProcessesPage*>();
    std::printf(
        "%zu rows on \"%s\"\n\n| from the action to the picture | ms CPU, least / median / most | ms |\n"
        "|---|---:|---:|\n",
        model.snapshot->rows.size(), qPrintable(QApplication::platformName()));
    Bench bench(*page);
    if (run(bench, rounds)) return 0;
    std::fputs("the table was not drawn anew after an action\n", stderr);
    return 1;
}
