#pragma once

#include <QAbstractButton>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A button that looks like a link: text in the accent colour, underlined when hovered or focused.
class LinkButton : public QAbstractButton {
    Q_OBJECT

public:
    LinkButton(const Look& look, const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
};

}  // namespace tolvane::desktop
