#include "desktop/Screens.h"

#include "desktop/ProcessesPage.h"

namespace tolvane::desktop {

std::vector<Screen> allScreens(AppModel& model, const Look& look, WindowState& state, const std::string& locale) {
    constexpr bool historyPresent = false;
    return {{AppSection::processes, [&model, &look, &state, locale](QWidget* parent) {
                 return new ProcessesPage(model, look, state, locale, historyPresent, parent);
             }}};
}

}  // namespace tolvane::desktop
