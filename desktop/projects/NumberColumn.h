#pragma once

#include <QWidget>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"

namespace tolvane::desktop {

/// A number under its title, both at the far edge; as wide as the widest that it is usually to hold, so that columns
/// of several rows stand below each other.
class NumberColumn : public QWidget {
    Q_OBJECT

public:
    NumberColumn(const Look& look, const QString& widestSample, QWidget* parent = nullptr);

    void show(const QString& title, const QString& value);
    using QWidget::show;
    /// Where room is short: as wide as what it holds, or less.
    void setTight(bool tight);
    int usualWidth() const { return usual_; }

private:
    ElidedLabel* title_;
    ElidedLabel* value_;
    int usual_ = 0;
};

}  // namespace tolvane::desktop
