#pragma once

#include <QComboBox>
#include <QMenu>
#include <QPointer>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A choice among many, in a button that opens a menu. `activated` reports what the user chose. The wheel scrolls the
/// page around it instead of changing the choice.
class PopupPicker : public QComboBox {
    Q_OBJECT

public:
    PopupPicker(const Look& look, const QString& name, QWidget* parent = nullptr);

    /// Does not emit `activated`. Unchanged choices are left alone, and all of them are while the menu is open.
    void show(const QStringList& choices, int chosen);
    using QComboBox::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void showPopup() override;
    /// Closes the menu without a choice.
    void hidePopup() override;
    bool isOpen() const { return !menu_.isNull(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    const Look& look_;
    QPointer<QMenu> menu_;
};

}  // namespace tolvane::desktop
