#include "desktop/Screens.h"

#include "desktop/ActivityPage.h"
#include "desktop/ProcessesPage.h"
#include "desktop/RulesPage.h"
#include "desktop/StatsPage.h"

namespace tolvane::desktop {

std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale) {
    constexpr bool historyPresent = false;
    const auto processes = [&model, &look, &state, locale](QWidget* parent) {
        return new ProcessesPage(model, look, state, locale, historyPresent, parent);
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
    return {{AppSection::processes, processes},
            {AppSection::stats, stats},
            {AppSection::rules, rules},
            {AppSection::activity, activity}};
}

}  // namespace tolvane::desktop
