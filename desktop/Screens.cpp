#include "desktop/Screens.h"

#include "desktop/ActivityPage.h"
#include "desktop/ProcessesPage.h"
#include "desktop/RulesPage.h"
#include "desktop/StatsPage.h"

namespace tolvane::desktop {

std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale) {
    constexpr bool historyPresent = false;
    return {{AppSection::processes,
             [&model, &look, &state, locale](QWidget* parent) {
                 return new ProcessesPage(model, look, state, locale, historyPresent, parent);
             }},
            {AppSection::stats,
             [&model, &look, locale](QWidget* parent) { return new StatsPage(model, look, locale, {}, parent); }},
            {AppSection::rules, [&model, &look, &state, locale](
                                    QWidget* parent) { return new RulesPage(model, look, state, locale, parent); }},
            {AppSection::activity, [&model, &look, &state, locale](QWidget* parent) {
                 return new ActivityPage(model, look, state, locale, {}, parent);
             }}};
}

}  // namespace tolvane::desktop
