#pragma once

#include <string>
#include <utility>

#include "core/rules/Rule.h"
#include "tests/app/ModelTest.h"

namespace tolvane {

/// A model with live rules that fire at its next tick.
struct RuleActsTest : ModelTest {
    static inline const std::string mail = "/Applications/Mail.app";

    /// A process of 300 MB, 100 of them compressed, that command rules find by its name.
    fakes::FakeProcess& addWorker(Pid pid, std::string_view name = "worker") {
        auto& process = world.add(pid, name);
        process.usage->footprint = 300 * MiB;
        process.memory = MemoryRecord{.compressed = 100 * MiB};
        return process;
    }
    /// The only process of Mail, of the same size.
    fakes::FakeProcess& addMail(Pid pid) {
        world.appIDs[mail] = "com.example.mail";
        auto& process = addApp(pid, mail);
        process.usage->footprint = 300 * MiB;
        process.memory = MemoryRecord{.compressed = 100 * MiB};
        return process;
    }
    fakes::FakeInstance& addInstance() {
        return world.instances.emplace_back(fakes::FakeInstance{.identifier = "com.example.mail", .appPath = mail});
    }

    static Rule workerRule(RuleAction action) {
        return {.id = UUID::random(),
                .name = "Large workers",
                .enabled = true,
                .dryRun = false,
                .target = CommandTarget{.patterns = {"/opt/worker"}},
                .memoryMB = 200,
                .action = action};
    }
    static Rule mailRule(RuleAction action) {
        auto rule = workerRule(action);
        rule.name = "Large mail";
        rule.target = AppTarget{.appID = "com.example.mail", .name = "Mail"};
        return rule;
    }
    static Rule onlyLogging(Rule rule) {
        rule.dryRun = true;
        return rule;
    }
    /// Makes the rules decide now.
    void fire(std::vector<Rule> rules) {
        if (!model) start();
        modelState->rules.set(std::move(rules));
        world.press();
    }
    std::vector<std::string> outcomes() const {
        std::vector<std::string> words;
        for (const auto& entry : *model->activity) words.push_back(entry.outcome.str());
        return words;
    }
    std::string lastTitle() const { return world.notifications.empty() ? "" : world.notifications.back().title; }
    std::string lastBody() const { return world.notifications.empty() ? "" : world.notifications.back().body; }
};

}  // namespace tolvane
