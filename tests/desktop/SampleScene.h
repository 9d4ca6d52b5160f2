#pragma once

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/window/WindowState.h"
#include "tests/fakes/Executors.h"
#include "tests/fakes/KeptState.h"
#include "tests/fakes/SampleCast.h"

namespace tolvane::desktop {

/// A fake host, a model with the sample cast, and a look: everything that a screen needs.
struct SampleScene {
    fakes::FakeHost fake;
    /// Jobs are held, so no sample is taken and the cast stays as it is.
    fakes::HeldJobs jobs;
    ModelState* modelState = nullptr;
    AppModel model;
    Look look;
    WindowState state;

    explicit SampleScene(Appearance appearance = {}, double textFactor = 1)
        : model((fakes::SampleCast::nameApplications(*fake.world), fake.host), *fake.windows, false, jobs.factory(),
                fakes::keptState(modelState)),
          look(*fake.host.applications, appearance, textFactor) {
        const auto cast = fakes::SampleCast::at(fake.clock->now());
        modelState->history.set(historyOf(cast));
        modelState->loadHistory.set(cast.loadHistory);
        modelState->swapGrowth.set(std::int64_t{310} << 20U);
        modelState->readBack.set(std::uint64_t{96} << 20U);
        modelState->snapshot.set(cast.snapshot);
        look.install();
    }

    void showRows(std::vector<ProcRow> rows) {
        auto next = *model.snapshot;
        next.date += Seconds{5};
        next.rows = std::move(rows);
        modelState->snapshot.set(std::move(next));
    }

private:
    static ProcessHistory historyOf(const fakes::SampleCast& cast) {
        ProcessHistory history;
        const auto ticks = cast.history.begin()->second.size();
        for (std::size_t tick = 0; tick < ticks; ++tick) {
            std::vector<ProcessHistory::Reading> readings;
            for (const auto& [pid, points] : cast.history) {
                readings.push_back({pid, points[tick].footprint, points[tick].compressed, points[tick].cpu});
            }
            history.record(readings, cast.history.begin()->second[tick].date);
        }
        return history;
    }
};

}  // namespace tolvane::desktop
