#pragma once

#include <QWidget>
#include <cstdio>
#include <cstdlib>

namespace tolvane::desktop {

/// The widget of that object name within `parent`. A name that is missing ends the test program.
template <typename Widget = QWidget>
Widget& widgetNamed(const QObject& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(QLatin1String(name));
    if (!found) {
        std::fprintf(stderr, "no widget is named %s\n", name);
        std::abort();
    }
    return *found;
}

/// The pane of that name is the one that its page shows.
inline bool isChosen(const QObject& page, const char* name) { return !widgetNamed(page, name).isHidden(); }

}  // namespace tolvane::desktop
