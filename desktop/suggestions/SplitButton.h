#pragma once

#include <QToolButton>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A button of two parts in one border: the label triggers the action, the arrow or the Down key opens a menu with
/// further ones.
class SplitButton : public QToolButton {
    Q_OBJECT

public:
    explicit SplitButton(const Look& look, QWidget* parent = nullptr);

    /// Also the accessible name.
    void setLabel(const QString& label);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The menu is about to open: fill it.
    void opening(QMenu* menu);
    /// The menu has closed and its chosen action, if any, is done.
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    const Look& look_;
    QMenu* menu_;
};

}  // namespace tolvane::desktop
