#pragma once

#include <QLayout>
#include <QWidget>

namespace tolvane::desktop {

/// The preferred height of a widget with a layout at that width. Layouts cache measurements and learn of deep changes
/// only later, so all of them are invalidated first. A widget that was never shown counts as hidden, so call this only
/// after the window was shown.
inline int heightAt(QWidget& widget, int width) {
    for (auto* each : widget.findChildren<QWidget*>()) each->updateGeometry();
    for (auto* each : widget.findChildren<QLayout*>()) each->invalidate();
    auto* layout = widget.layout();
    layout->invalidate();
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
}

}  // namespace tolvane::desktop
