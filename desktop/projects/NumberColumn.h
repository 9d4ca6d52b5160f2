#pragma once

#include <QWidget>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"

namespace tolvane::desktop {

/// A number below its title, both aligned to the far edge. As wide as the widest usual number, so that the columns of
/// several rows line up.
class NumberColumn : public QWidget {
    Q_OBJECT

public:
    NumberColumn(const Look& look, const QString& widestSample, QWidget* parent = nullptr);

    void show(const QString& title, const QString& value);
    using QWidget::show;
    /// Shrinks to its contents, or less, when space is short.
    void setTight(bool tight);
    int usualWidth() const { return usual_; }

private:
    ElidedLabel* title_;
    ElidedLabel* value_;
    int usual_ = 0;
};

}  // namespace tolvane::desktop
