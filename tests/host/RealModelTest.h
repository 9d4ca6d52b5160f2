#pragma once

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "app/acts/Acts.h"
#include "app/model/AppModel.h"
#include "platform/linux/makeLinuxHost.h"
#include "tests/app/AnswerOf.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/EventLoop.h"

namespace tolvane {

/// The program's own windows, of which this one has none.
class NoWindows : public Windows {
public:
    bool anyVisible() const override { return false; }
    Subscription onChange(std::function<void()>) override { return {}; }
};

/// The whole model on this machine, with a home of its own.
struct RealModelTest : testing::Test {
    using Line = linuxhost::ChildProcess::Line;

    fakes::TemporaryFolder home;
    Host host = linuxhost::makeLinuxHost(linuxhost::environmentOf({{"HOME", home.path().string()}}), {});
    NoWindows windows;
    std::unique_ptr<AppModel> model;

    /// Starts with one sample of what runs now.
    void start() {
        model = std::make_unique<AppModel>(host, windows, false);
        ASSERT_TRUE(linuxhost::runUntil([this] { return !model->snapshot->rows.empty(); }));
    }
    bool holds(Pid pid) const {
        const auto& rows = model->snapshot->rows;
        return std::ranges::find(rows, pid, &ProcRow::id) != rows.end();
    }

    struct End {
        bool gone = false;
        Seconds took{0};
    };
    /// Waits for the outcome on the real clock.
    End terminate(std::vector<Pid> pids) {
        const Date began = host.clock->now();
        const AnswerOf<bool> answer(areGone(model->acts().terminate({.title = "x", .pids = std::move(pids)})));
        EXPECT_TRUE(linuxhost::runUntil([&] { return answer.isThere(); }, std::chrono::seconds(20)));
        return {.gone = answer.get().value_or(false), .took = host.clock->now() - began};
    }

    static QCoro::Task<bool> areGone(QCoro::Task<Outcome> act) {
        const auto outcome = co_await act;
        co_return outcome.kind == Outcome::Kind::terminated;
    }

    /// A child's side: lives until a signal or the test's end.
    static void live(const Line& line) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        line.tell();
        while (line.hear()) {
        }
    }
    /// The same, ignoring the polite signal.
    static void liveOn(const Line& line) {
        ::signal(SIGTERM, SIG_IGN);
        live(line);
    }
};

}  // namespace tolvane
