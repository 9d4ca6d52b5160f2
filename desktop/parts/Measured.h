#pragma once

#include <QLayout>
#include <QWidget>

namespace tolvane::desktop {

/// How high a widget with a layout wants to be at that width. Layouts hear of changes far below them only later, and
/// remember what they measured before, so all of them are asked anew. What was never shown counts as hidden: ask from
/// the moment that the window is shown on.
inline int heightAt(QWidget& widget, int width) {
    for (auto* each : widget.findChildren<QWidget*>()) each->updateGeometry();
    for (auto* each : widget.findChildren<QLayout*>()) each->invalidate();
    auto* layout = widget.layout();
    layout->invalidate();
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
}

}  // namespace tolvane::desktop
