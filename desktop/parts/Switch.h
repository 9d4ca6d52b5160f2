#pragma once

#include <QCheckBox>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// An on-off setting: behaves and reads as a check box, looks like a switch. The row around it shows its label; `name`
/// is its accessible name.
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
