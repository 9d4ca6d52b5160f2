#pragma once

#include <QWidget>
#include <string>
#include <string_view>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A line icon that says nothing that words beside it do not say. Its colour follows the scheme, its size the text's.
class LineIcon : public QWidget {
    Q_OBJECT

public:
    /// `size` in device-independent pixels at 100 % text.
    LineIcon(const Look& look, std::string_view icon, QColor Tokens::* colour, int size, QWidget* parent = nullptr);

    void setIcon(std::string_view icon);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    std::string icon_;
    QColor Tokens::* colour_;
};

}  // namespace tolvane::desktop
