#pragma once

#include <filesystem>

#include "tests/app/ModelTest.h"
#include "tests/fakes/RuleScenes.h"

namespace tolvane {

/// A model with a few rules, in which a test sets the rows it needs. Home is a folder of the test's own.
struct RulesScene : ModelTest {
    static constexpr std::string_view locale = "en_US";
    static constexpr Date now = fakes::someNow;

    RulesScene() {
        world.home = folder / "home";
        start();
        modelState->rules.set({commandRule()});
    }

    static Rule commandRule() {
        return {.id = UUID::random(),
                .name = "Idle puma",
                .target = CommandTarget{{"puma"}},
                .unusedMinutes = 45,
                .action = RuleAction::terminate};
    }
    static Rule appRule() {
        return {.id = UUID::random(),
                .name = "Slack",
                .target = AppTarget{"com.slack", "Slack"},
                .unusedMinutes = 60,
                .action = RuleAction::relaunch};
    }

    void showRows(std::vector<ProcRow> rows) {
        auto next = *model->snapshot;
        next.date = now;
        next.rows = std::move(rows);
        modelState->snapshot.set(std::move(next));
    }
    static ProcRow puma(Pid pid, double unusedMinutes) {
        auto row = fakes::row(pid, 1, "ruby", {"ruby", "/srv/shop/puma"});
        row.unusedSince = now - Seconds{60 * unusedMinutes};
        return row;
    }
    ProcRow app(Pid pid, const std::string& name, std::uint64_t megabytes) {
        world.displayNames["/Applications/" + name + ".app"] = name + ".app";
        auto row = fakes::appRow(pid, 1, name, "com." + name);
        row.sample.footprint = megabytes * MiB;
        return row;
    }
    void makeDaemonFolder() const { std::filesystem::create_directories(folder / "home/.claude/daemon"); }

    const Rule& first() const { return model->rules->front(); }
};

}  // namespace tolvane
