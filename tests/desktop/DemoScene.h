#pragma once

#include "app/demo/DemoHost.h"
#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/window/WindowState.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/KeptState.h"

namespace tolvane::desktop {

/// The demo's world at one fixed moment, a Friday at 14:41, with a model and a look.
struct DemoScene {
    fakes::FakeHost fake;
    Host host;
    ModelState* modelState = nullptr;
    AppModel model;
    Look look;
    WindowState state;

    explicit DemoScene(Appearance appearance = {}, double textFactor = 1)
        : host(hostAtThatMoment(fake)),
          model(host, *fake.windows, true, AppModel::makeWorkerThread, fakes::keptState(modelState)),
          look(*host.applications, appearance, textFactor) {
        look.install();
    }

private:
    static Host hostAtThatMoment(fakes::FakeHost& fake) {
        constexpr double friday = 1'794'580'860;  // 2026-11-13 14:41 UTC
        fake.clock->jumpTo(dateFromUnixSeconds(friday));
        return Demo::inertHost(std::move(fake.host));
    }
};

}  // namespace tolvane::desktop
