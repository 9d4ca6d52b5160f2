#include "tests/fakes/SampleRules.h"

#include <map>
#include <string>

namespace tolvane::fakes {

namespace {

/// The commands that the cast's interpreters run.
const std::map<Pid, TextList>& commands() {
    static const std::map<Pid, TextList> all = {
        {61544, {"node", "/home/ada/Developer/docs-site/node_modules/.bin/storybook"}},
        {71302, {"node", "/home/ada/Developer/atlas-web/node_modules/vite/bin/vite.js"}},
        {69018, {"node", "/home/ada/Developer/atlas-web/node_modules/vite/bin/vite.js"}},
        {71420, {"node", "/home/ada/Developer/billing-api/node_modules/vite/bin/vite.js"}},
        {71377, {"node", "/home/ada/Developer/mobile-app/node_modules/expo/bin/cli.js"}},
        {70221, {"ruby", "puma 6.4.2 (tcp://localhost:3000)"}},
        {70222, {"ruby", "puma: cluster worker 0"}},
        {70223, {"ruby", "puma: cluster worker 1"}},
    };
    return all;
}

std::string identifierOf(std::string_view appPath) {
    if (appPath.ends_with("/Slack.app")) return "com.tinyspeck.slackmacgap";
    if (appPath.ends_with("/Microsoft Teams.app")) return "com.microsoft.teams2";
    return "org.example" + std::string(appPath.substr(appPath.rfind('/')));
}

}  // namespace

SampleRules SampleRules::on(std::vector<ProcRow> rows, FakeWorld& world) {
    for (auto& row : rows) {
        if (const auto found = commands().find(row.id()); found != commands().end()) row.sample.args = found->second;
        if (!row.appPath) continue;
        row.appID = identifierOf(*row.appPath);
        world.appIDs[row.appPath->str()] = row.appID->str();
    }
    SampleRules sample{.rules = Rule::presets(), .rows = std::move(rows)};
    sample.rules[0].setMode(RuleMode::logOnly);
    sample.rules[1].setMode(RuleMode::logOnly);
    sample.rules[2].setMode(RuleMode::on);
    sample.rules[4].setMode(RuleMode::on);
    return sample;
}

}  // namespace tolvane::fakes
