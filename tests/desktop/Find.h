#pragma once

#include <QWidget>
#include <cstdio>
#include <cstdlib>

namespace tolvane::desktop {

/// The widget with that object name within `parent`. A missing name aborts the test program.
template <typename Widget = QWidget>
Widget& widgetNamed(const QObject& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(QLatin1String(name));
    if (!found) {
        std::fprintf(stderr, "no widget is named %s\n", name);
        std::abort();
    }
    return *found;
}

/// Whether the named pane is the one that its page shows.
inline bool isChosen(const QObject& page, const char* name) { return !widgetNamed(page, name).isHidden(); }

}  // namespace tolvane::desktop
