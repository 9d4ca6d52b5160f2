#pragma once

#include <QToolButton>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A button of two parts in one border: the words do something, the arrow opens a menu with what else there is. So
/// does the Down key.
class SplitButton : public QToolButton {
    Q_OBJECT

public:
    explicit SplitButton(const Look& look, QWidget* parent = nullptr);

    /// Also what screen readers say.
    void setLabel(const QString& label);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The menu is about to open and wants its entries.
    void opening(QMenu* menu);
    /// It has closed, and what was chosen in it is done.
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
