#include "desktop/program/Screens.h"

#include <memory>

#include "desktop/activity/ActivityPage.h"
#include "desktop/history/HistoryPage.h"
#include "desktop/processes/ProcessesPage.h"
#include "desktop/projects/ProjectsPage.h"
#include "desktop/rules/RulesPage.h"
#include "desktop/stats/StatsPage.h"
#include "desktop/suggestions/SuggestionsPage.h"

namespace tolvane::desktop {

std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale) {
    const auto table = std::make_shared<TableArrangement>();
    const auto processes = [&model, &look, &state, locale, table](QWidget* parent) {
        auto* page = new ProcessesPage(model, look, state, locale, parent);
        page->keepArrangement(table);
        return page;
    };
    const auto projects = [&model, &look, locale](QWidget* parent) {
        return new ProjectsPage(model, look, locale, {}, parent);
    };
    const auto suggestions = [&model, &look, locale](QWidget* parent) {
        return new SuggestionsPage(model, look, locale, parent);
    };
    const auto history = [&model, &look, locale](QWidget* parent) {
        return new HistoryPage(model, look, locale, {}, parent);
    };
    const auto stats = [&model, &look, locale](QWidget* parent) {
        return new StatsPage(model, look, locale, {}, parent);
    };
    const auto rules = [&model, &look, &state, locale](QWidget* parent) {
        return new RulesPage(model, look, state, locale, parent);
    };
    const auto activity = [&model, &look, &state, locale](QWidget* parent) {
        return new ActivityPage(model, look, state, locale, {}, parent);
    };
    return {
        {AppSection::processes, processes}, {AppSection::projects, projects}, {AppSection::suggestions, suggestions},
        {AppSection::history, history},     {AppSection::stats, stats},       {AppSection::rules, rules},
        {AppSection::activity, activity}};
}

}  // namespace tolvane::desktop
