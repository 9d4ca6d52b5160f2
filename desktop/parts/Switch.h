#pragma once

#include <QCheckBox>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// An on-off choice in a form: a check box in what it does and says, a switch in how it looks. Its words stand beside
/// it; `name` is what screen readers say.
class Switch : public QCheckBox {
    Q_OBJECT

public:
    Switch(const Look& look, const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
};

}  // namespace tolvane::desktop
