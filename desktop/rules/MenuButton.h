#pragma once

#include <QPushButton>
#include <string>
#include <string_view>

#include "desktop/look/Look.h"

class QMenu;

namespace tolvane::desktop {

/// A bordered button with a line icon that opens a menu below it. Its name is its tooltip and its accessible name.
class MenuButton : public QPushButton {
    Q_OBJECT

public:
    MenuButton(const Look& look, std::string_view icon, const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The menu is about to open: fill it. It is deleted after it closes.
    void opening(QMenu* menu);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void open();

    const Look& look_;
    std::string icon_;
};

}  // namespace tolvane::desktop
