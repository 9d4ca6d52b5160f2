#pragma once

#include <QWidget>
#include <string_view>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/projects/LineIcon.h"

namespace tolvane::desktop {

/// A small icon and a short text in one colour; the text is cut in the middle if space is short.
class IconLabel : public QWidget {
    Q_OBJECT

public:
    IconLabel(const Look& look, QColor Tokens::* colour, QWidget* parent = nullptr);

    /// Hides itself if the text is empty.
    void show(std::string_view icon, const QString& text);
    using QWidget::show;
    const QString& text() const { return label_->text(); }

private:
    LineIcon* icon_;
    ElidedLabel* label_;
};

}  // namespace tolvane::desktop
