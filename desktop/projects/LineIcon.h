#pragma once

#include <QWidget>
#include <string>
#include <string_view>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A line icon that only illustrates the text beside it. Its colour follows the scheme, its size the text size.
class LineIcon : public QWidget {
    Q_OBJECT

public:
    /// `size` is in device-independent pixels at 100 % text.
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
